#pragma once

#include "desktop/CoverWindow.h"

#include <list>
#include <optional>

namespace tavro {

/// Keeps the covers that hide the desktop icons. Main thread only.
class HideDesktop {
public:
    static HideDesktop& shared();

    HideDesktop() = default;
    HideDesktop(const HideDesktop&) = delete;
    HideDesktop& operator=(const HideDesktop&) = delete;
    /// Closes what still stands: a cover and the window that shows it hold each other.
    ~HideDesktop();

    /// Makes one cover for each screen, in screen order, after those that stand already. They show the custom
    /// wallpaper where it is chosen, in use and there.
    void coverScreens(std::optional<bool> wallpaperChoice);
    /// Closes and forgets every cover.
    void removeCovers();

    /// The "changeWallpaper" option at the last covering; none when the options held none.
    std::optional<bool> changeWallpaper = false;
    std::list<CoverWindow> managedWindows;
};

} // namespace tavro
