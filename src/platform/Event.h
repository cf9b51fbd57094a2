#pragma once

#include <cstdint>

namespace tavro {

enum class EventType { none = 0, leftMouseUp = 2, rightMouseUp = 4, keyDown = 10, keyUp = 11 };

namespace EventModifierFlags {
inline constexpr unsigned shift = 0x20000;
inline constexpr unsigned control = 0x40000;
inline constexpr unsigned option = 0x80000;
inline constexpr unsigned command = 0x100000;
} // namespace EventModifierFlags

/// The bit of an event type in an event mask.
constexpr unsigned eventMask(EventType type) {
    return 1u << static_cast<unsigned>(type);
}

struct Event {
    EventType type = EventType::none;
    unsigned modifierFlags = 0;
    /// Of a key event: the virtual key code, which names a place on the keyboard.
    std::uint16_t keyCode = 0;
};

} // namespace tavro
