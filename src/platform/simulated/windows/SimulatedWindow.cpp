#include "platform/simulated/windows/SimulatedWindow.h"

#include "platform/windows/OverlayWindow.h"
#include "platform/windows/TitledWindow.h"

#include <utility>

namespace tavro {

template <class Kind>
SimulatedWindow<Kind>::SimulatedWindow(WindowNumber number, SimulatedWindowStack& stack, Journal& journal)
    : m_number(number)
    , m_stack(stack)
    , m_journal(journal) {}

template <class Kind>
SimulatedWindow<Kind>::~SimulatedWindow() {
    m_stack.remove(m_number);
}

template <class Kind>
void SimulatedWindow<Kind>::setLevel(int level) {
    if (change("setLevel", level))
        m_stack.setLevel(m_number, level);
}

template <class Kind>
void SimulatedWindow<Kind>::setContentView(std::shared_ptr<const View> view) {
    if (change("setContentView"))
        m_contentView = std::move(view);
}

template <class Kind>
void SimulatedWindow<Kind>::order(const char* call) {
    if (change(call))
        m_stack.orderFront(m_number);
}

template <class Kind>
void SimulatedWindow<Kind>::close() {
    if (change("close", windowNumber()))
        m_stack.remove(m_number);
    // The view may hold the last reference to this window.
    const auto view = std::move(m_contentView);
}

template class SimulatedWindow<OverlayWindow>;
template class SimulatedWindow<TitledWindow>;

} // namespace tavro
