#pragma once

#include "desktop/CoverContent.h"
#include "platform/storage/PropertyList.h"
#include "platform/windows/Geometry.h"
#include "platform/windows/Identifiers.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace tavro {

class OverlayWindow;
struct Screen;

/// One screen's cover: a click-through window one level above the desktop icons that shows the wallpaper.
/// The record is also what the window's content is computed from; copies share the window.
struct CoverWindow {
    /// Makes the window and brings it on screen. Screen changes afterwards are not followed.
    CoverWindow(std::optional<std::filesystem::path> wallpaperPath, const Screen& screen);

    /// Has the window show what the cover shows now.
    void showContent() const;

    /// What the cover shows: the custom wallpaper, once it has been read; else a picture of the wallpaper
    /// that lies below it; else the main screen's wallpaper file; else a text. Asked each time the cover is
    /// rendered.
    CoverContent body() const;

    static std::optional<DisplayID> screenDisplayID(const Screen& screen);
    /// A picture of the system's wallpaper window below the cover, for the area of the display.
    static std::optional<Image> captureWallpaper(DisplayID display, WindowNumber cover);
    /// Whether an entry of the window list is the system's wallpaper window.
    static bool isWallpaperWindow(const PropertyList::Dictionary& entry);

    std::shared_ptr<OverlayWindow> window;
    std::optional<Rect> displayFrame;
    const std::optional<std::filesystem::path> wallpaperPath;
    std::optional<DisplayID> displayID;
    std::optional<WindowNumber> windowNumber;

private:
    void configureWindow(const Screen& screen) const;
    std::optional<Image> capturedWallpaper() const;
};

} // namespace tavro
