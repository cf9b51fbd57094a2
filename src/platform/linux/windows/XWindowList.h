#pragma once

#include "platform/linux/x11/XConnection.h"
#include "platform/windows/WindowList.h"

namespace tavro {

/// The managed windows, and below them the wallpaper: the pixmap that desktops leave on the root window under
/// `_XROOTPMAP_ID` appears as the wallpaper window. Of the other windows no pictures are taken.
class XWindowList final : public WindowList {
public:
    explicit XWindowList(XConnection& x)
        : m_x(x) {}

    std::optional<PropertyList::Array> copyWindowInfo(unsigned options,
                                                      WindowNumber relativeTo) const override;
    std::optional<Image> createImage(Rect area, unsigned options, WindowNumber window,
                                     unsigned imageOptions) const override;

private:
    std::optional<xcb_pixmap_t> wallpaper() const;
    PropertyList::Array describe(const std::vector<xcb_window_t>& frontToBack) const;

    XConnection& m_x;
};

} // namespace tavro
