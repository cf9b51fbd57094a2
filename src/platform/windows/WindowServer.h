#pragma once

#include "platform/windows/OverlayWindow.h"
#include "platform/windows/Popover.h"
#include "platform/windows/TitledWindow.h"
#include "platform/windows/WindowSettings.h"

namespace tavro {

/// By the platform's numbers.
enum class WindowLevelKey { normal = 4, desktopIcon = 18 };

/// Makes windows, not shown yet; null where the server refuses one.
class WindowServer {
public:
    virtual ~WindowServer() = default;
    virtual std::shared_ptr<OverlayWindow> createOverlayWindow(const WindowSettings& settings) = 0;
    virtual std::shared_ptr<TitledWindow> createTitledWindow(const WindowSettings& settings) = 0;
    virtual std::shared_ptr<Popover> createPopover() = 0;
    /// The level of that kind of windows, for `Window::setLevel`; a window one above it stands over all of
    /// them.
    virtual int levelForKey(WindowLevelKey key) const = 0;
};

} // namespace tavro
