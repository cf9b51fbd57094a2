#pragma once

#include "platform/windows/View.h"

#include <cstdint>
#include <memory>

namespace tavro {

namespace WindowLevel {
inline constexpr int normal = 0;
inline constexpr int floating = 3;
} // namespace WindowLevel

/// What the windows of all kinds have in common. Made by `WindowServer`; not on screen before it is ordered
/// there. Closing it, or dropping the last reference to it, takes it off the screen; `close` also lets the
/// content view go, and calls after it have no effect. Main thread only.
class Window {
public:
    virtual ~Window() = default;
    /// Positive once the window exists.
    virtual std::int64_t windowNumber() const = 0;
    /// Windows of a higher level stand above those of a lower one.
    virtual void setLevel(int level) = 0;
    /// Takes the place of the former one. The window keeps it until `close`, or the next one.
    virtual void setContentView(std::shared_ptr<const View> view) = 0;
    /// On screen within its level, without activating the application.
    virtual void orderFrontRegardless() = 0;
    virtual void orderFront() = 0;
    /// On screen, and the key window if it is one that can take keys.
    virtual void makeKeyAndOrderFront() = 0;
    virtual void close() = 0;
};

} // namespace tavro
