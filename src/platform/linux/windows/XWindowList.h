#pragma once

#include "platform/linux/x11/XConnection.h"
#include "platform/windows/WindowList.h"

#include <QRect>

namespace tavro {

class DesktopSnapshots;
class DesktopWallpaper;

/// The managed windows, and below them the wallpaper: the server's picture of it appears as the wallpaper
/// window, or else the root window with pictures of our own. Of the other windows no pictures are taken.
class XWindowList final : public WindowList {
public:
    XWindowList(XConnection& x, DesktopSnapshots& snapshots, DesktopWallpaper& wallpaper)
        : m_x(x)
        , m_snapshots(snapshots)
        , m_wallpaper(wallpaper) {}

    std::optional<PropertyList::Array> copyWindowInfo(unsigned options,
                                                      WindowNumber relativeTo) const override;
    std::optional<Image> createImage(Rect area, unsigned options, WindowNumber window,
                                     unsigned imageOptions) const override;

private:
    std::optional<Image> pictureOf(xcb_pixmap_t number, const QRect& part) const;
    PropertyList::Array describe(const std::vector<xcb_window_t>& frontToBack) const;

    XConnection& m_x;
    DesktopSnapshots& m_snapshots;
    DesktopWallpaper& m_wallpaper;
};

} // namespace tavro
