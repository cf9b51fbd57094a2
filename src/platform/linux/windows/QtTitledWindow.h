#pragma once

#include "platform/windows/Window.h"
#include "toolkit/Views.h"

#include <QVBoxLayout>
#include <QWidget>

namespace tavro {

/// An ordinary window of the desktop with widgets in it, which takes input. Title bars belong to the window
/// manager, so what would stand in one stands at the top of the content.
class QtTitledWindow final : public Window {
public:
    QtTitledWindow(Rect contentRect, const Views& views);
    ~QtTitledWindow() override;

    std::int64_t windowNumber() const override;
    // It is what a user expects of a window in all these respects.
    void setLevel(int) override {}
    void setCollectionBehavior(unsigned) override {}
    void setStyleMask(unsigned) override {}
    void setTitleHidden(bool) override {}
    void setMovableByWindowBackground(bool) override {}
    void setCanHide(bool) override {}
    void setHasShadow(bool) override {}
    void setIgnoresMouseEvents(bool) override {}
    void setBackgroundColor(Color) override {}
    void setTitle(const std::string& title) override;
    void setFrame(Rect frame, bool display) override;
    void center() override;
    void setContentView(std::shared_ptr<const View> view) override;
    void addTitlebarAccessory(std::shared_ptr<const View> view) override;
    void setDelegate(std::weak_ptr<WindowDelegate> delegate) override { m_delegate = std::move(delegate); }
    void orderFrontRegardless() override { orderFront(); }
    void orderFront() override;
    void makeKeyAndOrderFront() override;
    void close() override;

private:
    class Frame;

    const Views& m_views;
    std::unique_ptr<Frame> m_frame; // null once closed
    QVBoxLayout* m_stack;
    std::weak_ptr<WindowDelegate> m_delegate;
};

} // namespace tavro
