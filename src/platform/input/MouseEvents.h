#pragma once

#include "platform/windows/Geometry.h"

#include <cstdint>
#include <optional>

namespace tavro {

// The values are the platform's.
enum class EventSourceState { hidSystemState = 1 };
enum class MouseEventType { leftMouseDown = 1, leftMouseUp = 2 };
enum class MouseButton { left = 0 };
enum class EventTap { hid = 0 };
inline constexpr std::uint64_t eventFlagMaskAlternate = 0x80000;

/// A synthesised event. The location is in points, origin at the upper left of the main display, y downwards.
struct MouseEvent {
    EventSourceState source = EventSourceState::hidSystemState;
    MouseEventType type = MouseEventType::leftMouseDown;
    Point location;
    MouseButton button = MouseButton::left;
    std::uint64_t flags = 0;
};

/// The pointer, and events that the program makes in the user's place.
class MouseEvents {
public:
    virtual ~MouseEvents() = default;
    /// Where the pointer is, origin at the lower left of the main screen.
    virtual Point mouseLocation() const = 0;
    /// None when the system refuses one.
    virtual std::optional<MouseEvent> create(EventSourceState source, MouseEventType type, Point location,
                                             MouseButton button) = 0;
    /// Puts the event into the system's input stream. Whether anything comes of it is not reported.
    virtual void post(EventTap tap, const MouseEvent& event) = 0;
};

} // namespace tavro
