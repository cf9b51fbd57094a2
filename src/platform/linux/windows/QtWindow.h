#pragma once

#include "platform/windows/Window.h"
#include "toolkit/Views.h"

#include <QRect>

#include <memory>

namespace tavro {

class DesktopLayer;
class XConnection;

/// A top-level of the toolkit whose content is painted and takes no input. Levels up to one above the desktop
/// icons stand in the desktop layer. Floating windows and higher ones are the window manager's no more: above
/// all others, on every workspace, never focused. Those between are ordinary windows.
class QtWindow final : public Window {
public:
    QtWindow(XConnection& x, DesktopLayer& desktopLayer, const ViewPainter& painter);
    ~QtWindow() override;

    std::int64_t windowNumber() const override;
    void setLevel(int level) override { m_level = level; }
    void setCollectionBehavior(unsigned behavior) override { m_behavior = behavior; }
    void setStyleMask(unsigned mask) override { m_styleMask = mask; }
    // Nothing that is painted has a title, or is dragged; nor is it closed by the user, or put elsewhere.
    void setTitle(const std::string&) override {}
    void center() override {}
    void addTitlebarAccessory(std::shared_ptr<const View>) override {}
    void setDelegate(std::weak_ptr<WindowDelegate>) override {}
    void setTitleHidden(bool) override {}
    void setMovableByWindowBackground(bool) override {}
    /// No effect of its own: nothing of ours is among the windows that hiding minimises, and "show desktop"
    /// leaves the desktop layer alone.
    void setCanHide(bool) override {}
    void setHasShadow(bool hasShadow) override { m_hasShadow = hasShadow; }
    void setIgnoresMouseEvents(bool ignores) override { m_ignoresMouseEvents = ignores; }
    void setBackgroundColor(Color color) override;
    void setFrame(Rect frame, bool display) override;
    void setContentView(std::shared_ptr<const View> view) override;
    void orderFrontRegardless() override { orderFront(); }
    void orderFront() override;
    void makeKeyAndOrderFront() override;
    void close() override;

private:
    class Surface;

    void show();
    QRect exactPlace() const;
    void updateShape();
    bool isInDesktopLayer() const;
    bool isFloating() const { return m_level >= WindowLevel::floating; }

    XConnection& m_x;
    DesktopLayer& m_desktopLayer;
    std::unique_ptr<Surface> m_surface; // null once closed
    std::int64_t m_number;
    Rect m_frame;
    int m_level = 0;
    unsigned m_behavior = 0;
    unsigned m_styleMask = 0;
    bool m_hasShadow = true;
    bool m_ignoresMouseEvents = false;
    bool m_showPending = false;
};

} // namespace tavro
