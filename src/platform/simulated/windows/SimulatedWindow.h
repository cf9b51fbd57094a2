#pragma once

#include "platform/simulated/windows/SimulatedWindowServer.h"
#include "platform/windows/Window.h"

namespace tavro {

/// A window of the program under test. Its visible state stands at the server; what only the looks depend on
/// stands in the journal.
class SimulatedWindow final : public Window {
public:
    SimulatedWindow(WindowNumber number, SimulatedWindowServer& server, Journal& journal);
    ~SimulatedWindow() override;

    std::int64_t windowNumber() const override { return static_cast<std::uint32_t>(m_number); }
    void setLevel(int level) override;
    void setCollectionBehavior(unsigned behavior) override;
    void setStyleMask(unsigned mask) override;
    void setTitle(const std::string& title) override;
    void setTitleHidden(bool hidden) override;
    void setMovableByWindowBackground(bool movable) override;
    void setCanHide(bool canHide) override;
    void setHasShadow(bool hasShadow) override;
    void setIgnoresMouseEvents(bool ignores) override;
    void setBackgroundColor(Color color) override;
    void setFrame(Rect frame, bool display) override;
    void center() override;
    void setContentView(std::shared_ptr<const View> view) override;
    void addTitlebarAccessory(std::shared_ptr<const View> view) override;
    void setDelegate(std::weak_ptr<WindowDelegate> delegate) override { m_delegate = std::move(delegate); }
    void orderFrontRegardless() override;
    void orderFront() override;
    void makeKeyAndOrderFront() override;
    void close() override;

    /// The user closes it.
    void closeByUser();
    /// Null before it is set, and after the window was closed.
    const std::shared_ptr<const View>& contentView() const { return m_contentView; }

private:
    /// The server's record, and a line in the journal; null, and no line, once the window is closed.
    template <class... Values>
    ServerWindow* change(const char* call, const Values&... values);

    const WindowNumber m_number;
    SimulatedWindowServer& m_server;
    Journal& m_journal;
    std::shared_ptr<const View> m_contentView;
    std::weak_ptr<WindowDelegate> m_delegate;
};

} // namespace tavro
