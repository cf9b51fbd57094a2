#include "desktop/HideDesktop.h"

#include "platform/Machine.h"
#include "platform/Process.h"
#include "platform/Screens.h"
#include "platform/Window.h"

namespace tavro {

HideDesktop& HideDesktop::shared() {
    return Process::current().shared<HideDesktop>();
}

HideDesktop::~HideDesktop() {
    removeCovers();
}

void HideDesktop::coverScreens(std::optional<bool> wallpaperChoice) {
    changeWallpaper = wallpaperChoice;
    for (const auto& screen : Process::current().machine().screens().screens())
        managedWindows.emplace_back(std::nullopt, screen);
}

void HideDesktop::removeCovers() {
    for (const auto& cover : managedWindows)
        if (cover.window)
            cover.window->close();
    managedWindows.clear();
}

} // namespace tavro
