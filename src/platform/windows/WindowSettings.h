#pragma once

#include "platform/windows/Geometry.h"
#include "platform/windows/Screens.h"
#include "platform/windows/WindowStyleMask.h"

namespace tavro {

enum class BackingStore { buffered = 2 };

/// What a window is made with.
struct WindowSettings {
    Rect contentRect;
    /// A union of `WindowStyleMask`.
    unsigned styleMask = WindowStyleMask::borderless;
    BackingStore backing = BackingStore::buffered;
    /// The server may wait with the window's own resources until it is ordered on screen.
    bool defer = false;
    Screen screen;
};

} // namespace tavro
