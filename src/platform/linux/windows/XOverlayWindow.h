#pragma once

#include "platform/linux/process/OncePerTurn.h"
#include "platform/linux/windows/PaintedWindow.h"
#include "platform/linux/windows/XPixmap.h"
#include "platform/process/ObserverList.h"
#include "platform/windows/OverlayWindow.h"
#include "toolkit/Views.h"

#include <QImage>

#include <memory>
#include <set>

namespace tavro {

class DesktopWallpaper;
class XConnection;
class XCovers;

/// A window of ours that is painted once and kept by the server. Levels up to one above the desktop icons are
/// covers; the others stand above all windows, on every workspace, never focused, and none of the window
/// manager's.
///
/// Shadow and clicks are what can be chosen of it: it has no title bar and cannot be dragged, and hiding and
/// "show desktop" leave it alone.
class XOverlayWindow final : public OverlayWindow {
public:
    XOverlayWindow(XConnection& x, XCovers& covers, DesktopWallpaper& wallpaper, const Views& views,
                   MainQueue& queue);
    ~XOverlayWindow() override;

    std::int64_t windowNumber() const override { return m_number; }
    void setLevel(int level) override { m_level = level; }
    void setCollectionBehavior(unsigned behavior) override { m_behavior = behavior; }
    void setStyleMask(unsigned) override {}
    void setAttribute(WindowAttribute attribute, bool isSo) override;
    void setBackgroundColor(Color color) override;
    void setFrame(Rect frame, bool display) override;
    void setContentView(std::shared_ptr<const View> view) override;
    void orderFrontRegardless() override { orderFront(); }
    void orderFront() override;
    void makeKeyAndOrderFront() override { orderFront(); }
    void close() override;

private:
    enum class Stage { made, shown, closed };

    void show();
    void showAbove();
    void render();
    void renderAbove();
    void updateShadow();
    std::shared_ptr<const XPixmap> coverPicture() const;
    QImage drawn(const ViewContent& content, QImage::Format format) const;
    QRect place() const;
    bool isCover() const;
    bool is(WindowAttribute attribute) const { return m_attributes.contains(attribute); }

    XConnection& m_x;
    XCovers& m_covers;
    DesktopWallpaper& m_wallpaper;
    const Views& m_views;
    const xcb_window_t m_number;
    Stage m_stage = Stage::made;
    Rect m_frame;
    int m_level = 0;
    unsigned m_behavior = 0;
    Color m_background{.alpha = 0};
    std::set<WindowAttribute> m_attributes{WindowAttribute::canHide, WindowAttribute::hasShadow};
    std::shared_ptr<const View> m_view;
    std::unique_ptr<PaintedWindow> m_above; // of one that is no cover
    bool m_isTranslucent = false;
    OncePerTurn m_showing;
    Observation m_wallpaperChanges;
};

} // namespace tavro
