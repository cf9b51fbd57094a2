#pragma once

#include <QRect>
#include <xcb/xcb.h>

#include <cstdint>
#include <vector>

namespace tavro {

/// A window that holds the desktop's icons, and its place on the root window, in pixels.
struct DesktopWindow {
    xcb_window_t id = XCB_NONE;
    std::uint8_t depth = 0;
    QRect place;
    bool operator==(const DesktopWindow&) const = default;
};

/// A piece of a cover: a window of ours in a desktop window, above the icons that are drawn there, or on the
/// root window.
struct CoverPane {
    xcb_window_t parent = XCB_NONE;
    std::uint8_t depth = 0; // of the parent
    QRect place;            // in the parent
    QPoint offset;          // of the place from the cover's corner
    bool operator==(const CoverPane&) const = default;
};

/// The pieces that hide the icons of every desktop window that reaches into the cover's place, whichever
/// stands above the other; one on the root window where none does. What a desktop window leaves to a panel
/// needs no piece.
std::vector<CoverPane> panesOf(const QRect& cover, const std::vector<DesktopWindow>& desktopWindows,
                               const DesktopWindow& root);

} // namespace tavro
