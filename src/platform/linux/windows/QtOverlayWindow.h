#pragma once

#include "platform/windows/OverlayWindow.h"
#include "toolkit/Views.h"

#include <QRect>

#include <memory>
#include <set>

namespace tavro {

class DesktopLayer;
class XConnection;

/// A top-level of the toolkit whose content is painted. Levels up to one above the desktop icons stand in the
/// desktop layer. Floating windows and higher ones are the window manager's no more: above all others, on
/// every workspace, never focused. Those between are ordinary windows. It takes no input, so it needs no
/// widget, whose native window would change its number with some flags: the wallpaper below a cover is found
/// by that number.
///
/// Shadow and clicks are what can be chosen of it: title bars and dragging belong to the window manager, and
/// hiding leaves our own windows alone, as "show desktop" does those two layers.
class QtOverlayWindow final : public OverlayWindow {
public:
    QtOverlayWindow(XConnection& x, DesktopLayer& desktopLayer, const ViewPainter& painter);
    ~QtOverlayWindow() override;

    std::int64_t windowNumber() const override;
    void setLevel(int level) override { m_level = level; }
    void setCollectionBehavior(unsigned behavior) override { m_behavior = behavior; }
    void setStyleMask(unsigned mask) override { m_styleMask = mask; }
    void setAttribute(WindowAttribute attribute, bool isSo) override;
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
    bool is(WindowAttribute attribute) const { return m_attributes.contains(attribute); }

    XConnection& m_x;
    DesktopLayer& m_desktopLayer;
    std::unique_ptr<Surface> m_surface; // null once closed
    std::int64_t m_number;
    Rect m_frame;
    int m_level = 0;
    unsigned m_behavior = 0;
    unsigned m_styleMask = 0;
    std::set<WindowAttribute> m_attributes{WindowAttribute::canHide, WindowAttribute::hasShadow};
    bool m_showPending = false;
};

} // namespace tavro
