#pragma once

#include "platform/process/OSStatus.h"
#include "platform/process/Result.h"
#include "platform/storage/PropertyList.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>

namespace tavro {

// Bits of a hot key's modifier mask; the values are the platform's.
inline constexpr std::uint32_t cmdKey = 0x100;
inline constexpr std::uint32_t shiftKey = 0x200;
inline constexpr std::uint32_t optionKey = 0x800;
inline constexpr std::uint32_t controlKey = 0x1000;

inline constexpr std::uint32_t kEventClassKeyboard = fourCharacterCode("keyb");
inline constexpr std::uint32_t kEventHotKeyPressed = 5;
inline constexpr std::uint32_t kEventHotKeyReleased = 6;

inline constexpr OSStatus eventNotHandledErr = -9874;
/// Another program has the combination.
inline constexpr OSStatus eventHotKeyExistsErr = -9878;
/// There is no such key or modifier here, or no such registration.
inline constexpr OSStatus eventHotKeyInvalidErr = -9879;

/// What a program knows its hot key by.
struct EventHotKeyID {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;
    bool operator==(const EventHotKeyID&) const = default;
};

// What the system knows things by; `none` is never given out.
enum class EventHotKeyRef : std::uint64_t { none = 0 };
enum class EventTargetRef : std::uint64_t { none = 0 };
enum class EventHandlerRef : std::uint64_t { none = 0 };

/// A kind of event that a handler is installed for.
struct EventTypeSpec {
    std::uint32_t eventClass = 0;
    std::uint32_t eventKind = 0;
    bool operator==(const EventTypeSpec&) const = default;
};

/// An event of the keyboard class.
struct HotKeyEvent {
    std::uint32_t kind = 0;
    /// The hot key that it concerns, or the status of the failure to read it.
    Result<EventHotKeyID, OSStatus> directObject = OSStatus{eventNotHandledErr};
};

/// Returns noErr for an event that it has dealt with; every other status passes the event on. The event may
/// be null.
using EventHandler = std::function<OSStatus(const HotKeyEvent*)>;

/// Key combinations that work whatever program has the focus. Main thread only; events come on the main
/// thread, never inside a call of this interface.
///
/// One press of a key gives one pressed event, and its release one released event, whether or not the
/// modifiers are still held: a key that is held down does not repeat. The state of Caps Lock and the like
/// does not matter.
class HotKeyCenter {
public:
    virtual ~HotKeyCenter() = default;

    /// Where this process gets its events; none while there is no such place.
    virtual EventTargetRef getEventDispatcherTarget() = 0;
    /// Handlers are called in the order of their installation, until one has dealt with the event.
    virtual OSStatus installEventHandler(EventTargetRef target, EventHandler handler,
                                         std::span<const EventTypeSpec> events,
                                         EventHandlerRef& handlerRef) = 0;

    /// Takes the combination in every state of the lock keys and gives a reference; or fails, with nothing
    /// taken. A failed attempt is not repeated when the key becomes free. The process may take a combination
    /// more than once: each registration gets its own events.
    virtual OSStatus registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID id,
                                         EventTargetRef target, std::uint32_t options,
                                         EventHotKeyRef& hotKey) = 0;
    /// The combination is free for others when this returns. A reference that is not registered is a failure
    /// without effect. A key that is down gives no released event any more.
    virtual OSStatus unregisterEventHotKey(EventHotKeyRef hotKey) = 0;

    /// Asks the system which combinations it uses itself, in the background.
    virtual void refreshSymbolicHotKeys() = 0;
    /// What it has last answered: an array of dictionaries with the platform's keys
    /// "kHISymbolicHotKeyEnabled", "kHISymbolicHotKeyCode" and "kHISymbolicHotKeyModifiers". Nobody is waited
    /// for, since whoever asks may hold the keyboard.
    virtual OSStatus copySymbolicHotKeys(std::optional<PropertyList>& hotKeys) const = 0;
};

} // namespace tavro
