#pragma once

#include "platform/windows/Geometry.h"

#include <cstdint>
#include <optional>

namespace tavro {

enum class EventType { none = 0, leftMouseUp = 2, rightMouseUp = 4, keyDown = 10, keyUp = 11 };

/// What was held down, or locked, when the event came about; the values are the platform's.
namespace EventModifierFlags {
inline constexpr unsigned capsLock = 0x10000;
inline constexpr unsigned shift = 0x20000;
inline constexpr unsigned control = 0x40000;
inline constexpr unsigned option = 0x80000;
inline constexpr unsigned command = 0x100000;
inline constexpr unsigned numericPad = 0x200000;
inline constexpr unsigned function = 0x800000;
inline constexpr unsigned deviceIndependentMask = 0xFFFF0000;
} // namespace EventModifierFlags

/// Keys with a meaning of their own on every keyboard; the values are the platform's. The function keys from
/// f1 to f35 follow each other.
enum class SpecialKey : std::uint16_t {
    none = 0,
    backspace = 0x08,
    tab = 0x09,
    delete_ = 0x7F,
    f1 = 0xF704,
    f35 = 0xF726,
    deleteForward = 0xF728,
};

/// The bit of an event type in an event mask.
constexpr unsigned eventMask(EventType type) {
    return 1u << static_cast<unsigned>(type);
}

/// One event of the user's, as it is handed to monitors and actions.
struct Event {
    EventType type = EventType::none;
    unsigned modifierFlags = 0;
    /// Of a key event: the virtual key code, which names a place on the keyboard. None for a key without one.
    std::optional<std::uint16_t> keyCode = std::nullopt;
    SpecialKey specialKey = SpecialKey::none;
    /// Of a mouse event: where on the screens.
    Point location = {};
};

} // namespace tavro
