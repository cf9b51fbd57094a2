#pragma once

#include "platform/windows/Geometry.h"
#include "platform/windows/TitledWindow.h"
#include "toolkit/Views.h"

#include <QVBoxLayout>
#include <QWidget>

namespace tavro {

/// An ordinary window of the desktop with widgets in it, which takes input. Title bars belong to the window
/// manager, so what would stand in one stands at the top of the content.
class QtTitledWindow final : public TitledWindow {
public:
    QtTitledWindow(Size contentSize, const Views& views);
    ~QtTitledWindow() override;

    std::int64_t windowNumber() const override;
    void setLevel(int level) override;
    void setContentView(std::shared_ptr<const View> view) override;
    void orderFrontRegardless() override { orderFront(); }
    void orderFront() override;
    void makeKeyAndOrderFront() override;
    void close() override;
    void setTitle(const std::string& title) override;
    void center() override;
    void addTitlebarAccessory(std::shared_ptr<const View> view) override;
    void setDelegate(std::weak_ptr<WindowDelegate> delegate) override { m_delegate = std::move(delegate); }

private:
    class Frame;

    const Views& m_views;
    std::unique_ptr<Frame> m_frame; // null once closed
    QVBoxLayout* m_stack;
    std::weak_ptr<WindowDelegate> m_delegate;
};

} // namespace tavro
