#include "desktop/HideDesktop.h"

#include "desktop/CustomWallpaper.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/windows/OverlayWindow.h"
#include "platform/windows/Screens.h"

namespace tavro {

HideDesktop& HideDesktop::shared() {
    return Process::current().shared<HideDesktop>();
}

HideDesktop::~HideDesktop() {
    removeCovers();
}

void HideDesktop::coverScreens(std::optional<bool> wallpaperChoice) {
    changeWallpaper = wallpaperChoice;
    const auto wallpaper = changeWallpaper.value_or(false) ? customWallpaperURL() : std::nullopt;
    for (const auto& screen : machine().screens().screens())
        managedWindows.emplace_back(wallpaper, screen);
    if (wallpaper) // another one may have been put there meanwhile
        PreparedWallpaper::shared().prepare(*wallpaper, [] {
            for (const auto& cover : shared().managedWindows)
                cover.showContent();
        });
}

void HideDesktop::removeCovers() {
    for (const auto& cover : managedWindows)
        if (cover.window)
            cover.window->close();
    managedWindows.clear();
}

} // namespace tavro
