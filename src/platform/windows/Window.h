#pragma once

#include "platform/windows/Color.h"
#include "platform/windows/Geometry.h"
#include "platform/windows/View.h"

#include <cstdint>
#include <memory>
#include <string>

namespace tavro {

namespace WindowStyleMask {
inline constexpr unsigned borderless = 0;
inline constexpr unsigned titled = 1;
inline constexpr unsigned closable = 2;
inline constexpr unsigned miniaturizable = 4;
inline constexpr unsigned fullSizeContentView = 0x8000;
} // namespace WindowStyleMask

namespace WindowCollectionBehavior {
inline constexpr unsigned canJoinAllSpaces = 1;
inline constexpr unsigned stationary = 16;
inline constexpr unsigned ignoresCycle = 64;
inline constexpr unsigned fullScreenAuxiliary = 256;
inline constexpr unsigned fullScreenDisallowsTiling = 4096;
} // namespace WindowCollectionBehavior

namespace WindowLevel {
inline constexpr int normal = 0;
inline constexpr int floating = 3;
} // namespace WindowLevel

enum class BackingStore { buffered = 2 };

/// What a window tells of itself.
class WindowDelegate {
public:
    virtual ~WindowDelegate() = default;
    /// The user closes the window.
    virtual void windowWillClose() = 0;
};

/// One window. Made by `WindowServer`; not on screen before it is ordered there. Closing it, or dropping the
/// last reference to it, takes it off the screen; `close` also lets the content view go, and calls after it
/// have no effect. Main thread only.
class Window {
public:
    virtual ~Window() = default;
    /// Positive once the window exists.
    virtual std::int64_t windowNumber() const = 0;
    virtual void setLevel(int level) = 0;
    virtual void setCollectionBehavior(unsigned behavior) = 0;
    virtual void setStyleMask(unsigned mask) = 0;
    virtual void setTitle(const std::string& title) = 0;
    /// True: a title bar, where there is one, shows no title.
    virtual void setTitleHidden(bool hidden) = 0;
    /// True: the user can drag the window by its background.
    virtual void setMovableByWindowBackground(bool movable) = 0;
    /// False: neither hiding the application nor clearing the desktop takes the window away.
    virtual void setCanHide(bool canHide) = 0;
    virtual void setHasShadow(bool hasShadow) = 0;
    /// True: clicks pass through to what lies below.
    virtual void setIgnoresMouseEvents(bool ignores) = 0;
    virtual void setBackgroundColor(Color color) = 0;
    /// The window takes exactly this rectangle, whatever panels reserve.
    virtual void setFrame(Rect frame, bool display) = 0;
    /// Puts it into the middle of the screen.
    virtual void center() = 0;
    virtual void setContentView(std::shared_ptr<const View> view) = 0;
    /// A view in the title bar, or at the top of the content where title bars are not the application's.
    virtual void addTitlebarAccessory(std::shared_ptr<const View> view) = 0;
    /// The delegate is not kept alive.
    virtual void setDelegate(std::weak_ptr<WindowDelegate> delegate) = 0;
    /// On screen within its level, without activating the application.
    virtual void orderFrontRegardless() = 0;
    virtual void orderFront() = 0;
    /// On screen, and the key window if it is one that can take keys.
    virtual void makeKeyAndOrderFront() = 0;
    virtual void close() = 0;
};

} // namespace tavro
