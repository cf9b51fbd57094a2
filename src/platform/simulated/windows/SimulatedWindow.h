#pragma once

#include "platform/simulated/process/Journal.h"
#include "platform/simulated/windows/SimulatedWindowStack.h"
#include "platform/windows/View.h"

#include <memory>
#include <string>

namespace tavro {

/// What the windows of the program under test have in common, over the interface of the kind that they are.
/// Their visible state stands at the server; what only the looks depend on stands in the journal.
template <class Kind>
class SimulatedWindow : public Kind {
public:
    SimulatedWindow(WindowNumber number, SimulatedWindowStack& stack, Journal& journal);
    SimulatedWindow(const SimulatedWindow&) = delete;
    SimulatedWindow& operator=(const SimulatedWindow&) = delete;
    ~SimulatedWindow() override;

    std::int64_t windowNumber() const override { return static_cast<std::uint32_t>(m_number); }
    void setLevel(int level) override;
    void setContentView(std::shared_ptr<const View> view) override;
    void orderFrontRegardless() override { order("orderFrontRegardless"); }
    void orderFront() override { order("orderFront"); }
    void makeKeyAndOrderFront() override { order("makeKeyAndOrderFront"); }
    void close() override;

    /// Null before it is set, and after the window was closed.
    const std::shared_ptr<const View>& contentView() const { return m_contentView; }

protected:
    /// The server's record, and a line in the journal; null, and no line, once the window is closed.
    template <class... Values>
    ServerWindow* change(const char* call, const Values&... values) {
        auto* window = m_stack.find(m_number);
        if (window)
            m_journal.record(std::string("window.") + call, values...);
        return window;
    }

private:
    void order(const char* call);

    const WindowNumber m_number;
    SimulatedWindowStack& m_stack;
    Journal& m_journal;
    std::shared_ptr<const View> m_contentView;
};

} // namespace tavro
