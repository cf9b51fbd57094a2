#include "platform/linux/x11/WindowManagerSync.h"

#include <QTimer>

#include <algorithm>
#include <utility>

namespace tavro {

WindowManagerSync::WindowManagerSync(XConnection& x)
    : m_x(x)
    , m_window(xcb_generate_id(x.raw()))
    , m_events{
          x.onPropertyChange(m_window, x.atoms().netFrameExtents, [this] { answered(); }),
          x.onPropertyChange(x.root(), x.atoms().netSupportingWmCheck, [this] { replaced(); }),
          x.onPropertyChange(x.root(), x.atoms().netSupported, [this] { lookWhetherItAnswers(); }),
      } {
    // It is never shown: EWMH lets programs ask for the frame of a window before they show it.
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(x.raw(), XCB_COPY_FROM_PARENT, m_window, x.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    lookWhetherItAnswers();
}

WindowManagerSync::~WindowManagerSync() {
    xcb_destroy_window(m_x.raw(), m_window);
}

void WindowManagerSync::whenCarriedOut(std::function<void()> block) {
    m_waiting.push_back(std::move(block));
    ask();
}

Observation WindowManagerSync::onReplacement(std::function<void()> handler) {
    return m_replacementObservers.add(std::move(handler));
}

void WindowManagerSync::lookWhetherItAnswers() {
    const auto supported = m_x.values(m_x.request(m_x.root(), m_x.atoms().netSupported));
    m_answers = std::ranges::count(supported, m_x.atoms().netRequestFrameExtents) > 0;
}

void WindowManagerSync::ask() {
    if (!m_answers)
        return QTimer::singleShot(std::chrono::seconds(1), &m_x, [this, weak = std::weak_ptr(m_asked)] {
            if (weak.lock())
                answered();
        });
    m_x.askWindowManager(m_window, m_x.atoms().netRequestFrameExtents, {});
    m_x.flush();
}

void WindowManagerSync::answered() {
    if (m_waiting.empty())
        return;
    const auto block = std::move(m_waiting.front());
    m_waiting.pop_front();
    block();
}

// Each window manager sets _NET_SUPPORTING_WM_CHECK when it begins (EWMH).
void WindowManagerSync::replaced() {
    m_asked = std::make_shared<bool>(true);
    lookWhetherItAnswers();
    const auto count = m_waiting.size(); // without what observers add, who ask themselves
    m_replacementObservers.notify();
    for (std::size_t i = 0; i < count; ++i)
        ask();
}

} // namespace tavro
