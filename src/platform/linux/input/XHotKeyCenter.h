#pragma once

#include "platform/input/HotKeyCenter.h"
#include "platform/linux/desktops/KnownShortcuts.h"
#include "platform/linux/input/XKeyboard.h"
#include "platform/linux/x11/XConnection.h"
#include "platform/process/MainQueue.h"

#include <map>
#include <optional>
#include <vector>

namespace tavro {

class Log;

/// Hot keys as passive grabs on the root window: of the key at its place, with Super for Command and Alt for
/// Option.
///
/// A grab names one exact set of modifiers, so a hot key takes one for each state of the lock keys. The
/// server gives a combination to one client only and refuses it to all others, which is how we know that
/// another program uses it. From the press of a grabbed key to its release the whole keyboard is ours; a
/// second hot key that is pressed meanwhile has no grab of its own, and would lose its release (see
/// `followRemaining`).
class XHotKeyCenter final : public HotKeyCenter {
public:
    /// The question is that for the desktop's own combinations.
    XHotKeyCenter(XConnection& x, XKeyboard& keyboard, KnownShortcuts::Question ofDesktop, MainQueue& queue,
                  Log& log);

    EventTargetRef getEventDispatcherTarget() override;
    OSStatus installEventHandler(EventTargetRef target, EventHandler handler,
                                 std::span<const EventTypeSpec> events, EventHandlerRef& handlerRef) override;
    OSStatus registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID id,
                                 EventTargetRef target, std::uint32_t options,
                                 EventHotKeyRef& hotKey) override;
    OSStatus unregisterEventHotKey(EventHotKeyRef hotKey) override;
    void refreshSymbolicHotKeys() override { m_desktopShortcuts.ask(); }
    OSStatus copySymbolicHotKeys(std::optional<PropertyList>& hotKeys) const override;

private:
    /// What the server is asked to watch for: a keycode and the modifiers besides locks.
    struct Grab {
        xcb_keycode_t keycode = 0;
        std::uint16_t modifiers = 0;
        auto operator<=>(const Grab&) const = default;
    };
    /// One combination may be registered several times: they share the grab, which goes with the last.
    struct Registration {
        std::uint32_t keyCode;
        std::uint32_t modifiers;
        EventHotKeyID id;
        std::optional<Grab> grab; // none while somebody else has it
    };

    std::optional<Grab> grabFor(std::uint32_t keyCode, std::uint32_t modifiers) const;
    std::vector<std::uint16_t> lockStates() const;
    bool take(const Grab& grab);
    void release(const Grab& grab);
    bool isUsed(const Grab& grab) const;
    void renew();

    void pressed(const xcb_key_press_event_t& event);
    void released(xcb_keycode_t keycode);
    void followRemaining();
    void post(EventHotKeyRef hotKey, std::uint32_t kind);

    XConnection& m_x;
    XKeyboard& m_keyboard;
    KnownShortcuts m_desktopShortcuts;
    MainQueue& m_queue;
    Log& m_log;
    XKeyboard::Modifiers m_takenWith;
    std::uint64_t m_lastReference = 0;
    std::map<EventHotKeyRef, Registration> m_registrations;
    std::vector<EventHandler> m_handlers;
    std::multimap<xcb_keycode_t, EventHotKeyRef> m_pressed;
    std::optional<xcb_keycode_t> m_grabbedBy; // the key whose press gave us the keyboard, until its release
    bool m_holdsKeyboard = false;
    std::uint32_t m_letGoAt = 0; // the request by which the keyboard was last let go
    std::shared_ptr<bool> m_isAlive = std::make_shared<bool>(true);
    Observation m_keyboardChange;
    Observation m_presses, m_releases;
};

} // namespace tavro
