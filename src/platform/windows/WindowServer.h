#pragma once

#include "platform/windows/Popover.h"
#include "platform/windows/Screens.h"
#include "platform/windows/Window.h"

namespace tavro {

/// By the platform's numbers.
enum class WindowLevelKey { normal = 4, desktopIcon = 18 };

/// Makes windows.
class WindowServer {
public:
    virtual ~WindowServer() = default;
    /// A window on this screen, not shown yet; null when the server refuses one.
    virtual std::shared_ptr<Window> createWindow(Rect contentRect, unsigned styleMask, BackingStore backing,
                                                 bool defer, const Screen& screen) = 0;
    virtual std::shared_ptr<Popover> createPopover() = 0;
    virtual int levelForKey(WindowLevelKey key) const = 0;
};

} // namespace tavro
