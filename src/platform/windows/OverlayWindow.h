#pragma once

#include "platform/windows/Color.h"
#include "platform/windows/Geometry.h"
#include "platform/windows/Window.h"
#include "platform/windows/WindowStyleMask.h"

namespace tavro {

/// How a window takes part in workspaces and in switching between windows; the values are the platform's.
namespace WindowCollectionBehavior {
inline constexpr unsigned canJoinAllSpaces = 1;
inline constexpr unsigned stationary = 16;
inline constexpr unsigned ignoresCycle = 64;
inline constexpr unsigned fullScreenAuxiliary = 256;
inline constexpr unsigned fullScreenDisallowsTiling = 4096;
} // namespace WindowCollectionBehavior

/// What an overlay is or is not. A machine on which one of them cannot be otherwise has nothing to do for it.
enum class WindowAttribute {
    /// A title bar, where there is one, shows no title. Not so at first.
    titleHidden,
    /// The user can drag the window by its background. Not so at first.
    movableByWindowBackground,
    /// Hiding the application or clearing the desktop takes the window away. So at first.
    canHide,
    /// So at first.
    hasShadow,
    /// Clicks pass through to what lies below. Not so at first.
    ignoresMouseEvents,
};

/// A window that lies over the desktop, or over all other windows, and only shows something: its content is
/// painted and never takes the keyboard.
class OverlayWindow : public Window {
public:
    /// A union of `WindowCollectionBehavior`.
    virtual void setCollectionBehavior(unsigned behavior) = 0;
    /// A union of `WindowStyleMask`.
    virtual void setStyleMask(unsigned mask) = 0;
    virtual void setAttribute(WindowAttribute attribute, bool isSo) = 0;
    /// Behind the content; where it is transparent, what lies below shows.
    virtual void setBackgroundColor(Color color) = 0;
    /// The window takes exactly this rectangle, whatever panels reserve.
    virtual void setFrame(Rect frame, bool display) = 0;
};

} // namespace tavro
