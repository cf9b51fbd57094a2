#include "platform/linux/input/XHotKeyCenter.h"

#include "platform/linux/input/VirtualKeys.h"
#include "platform/process/Log.h"

#include <algorithm>

namespace tavro {

namespace {

constexpr EventTargetRef dispatcher{1};
/// The modifiers in the state of an event: above them are the pointer's buttons and, from the keyboard
/// extension, the layout.
constexpr std::uint16_t allModifiers = 0xFF;

bool isDown(const xcb_query_keymap_reply_t& keymap, xcb_keycode_t keycode) {
    return keymap.keys[keycode / 8] >> keycode % 8 & 1;
}

} // namespace

XHotKeyCenter::XHotKeyCenter(XConnection& x, XKeyboard& keyboard, KnownShortcuts::Question ofDesktop,
                             MainQueue& queue, Log& log)
    : m_x(x)
    , m_keyboard(keyboard)
    , m_desktopShortcuts(std::move(ofDesktop))
    , m_queue(queue)
    , m_log(log)
    , m_takenWith(keyboard.modifiers())
    , m_keyboardChange(keyboard.onChange([this] { renew(); }))
    , m_presses(x.on(XEvents::keyPress, [this](const auto& event) { pressed(event); }))
    , m_releases(x.on(XEvents::keyRelease, [this](const auto& event) { released(event.detail); })) {}

EventTargetRef XHotKeyCenter::getEventDispatcherTarget() {
    return dispatcher;
}

OSStatus XHotKeyCenter::installEventHandler(EventTargetRef, EventHandler handler,
                                            std::span<const EventTypeSpec>, EventHandlerRef& handlerRef) {
    m_handlers.push_back(std::move(handler));
    handlerRef = EventHandlerRef{m_handlers.size()};
    return noErr;
}

OSStatus XHotKeyCenter::registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID id,
                                            EventTargetRef, std::uint32_t, EventHotKeyRef& hotKey) {
    const auto grab = grabFor(keyCode, modifiers);
    if (!grab)
        return eventHotKeyInvalidErr;
    if (!isUsed(*grab) && !take(*grab)) {
        m_log.diagnose("Another program uses the key combination " + std::to_string(keyCode) +
                       " with modifiers " + std::to_string(modifiers));
        return eventHotKeyExistsErr;
    }
    hotKey = EventHotKeyRef{++m_lastReference};
    m_registrations.emplace(hotKey, Registration{keyCode, modifiers, id, grab});
    return noErr;
}

OSStatus XHotKeyCenter::unregisterEventHotKey(EventHotKeyRef hotKey) {
    const auto entry = m_registrations.find(hotKey);
    if (entry == m_registrations.end())
        return eventHotKeyInvalidErr;
    const auto grab = entry->second.grab;
    m_registrations.erase(entry);
    std::erase_if(m_pressed, [hotKey](const auto& pressed) { return pressed.second == hotKey; });
    // Whoever asks for the combination next, another program maybe, is to find it free.
    if (grab && !isUsed(*grab)) {
        release(*grab);
        m_x.roundTrip();
    }
    return noErr;
}

OSStatus XHotKeyCenter::copySymbolicHotKeys(std::optional<PropertyList>& hotKeys) const {
    PropertyList::Array entries;
    for (const auto& shortcut : m_desktopShortcuts.known()) {
        // Desktops name what a key types, hot keys where it stands. What no key types cannot be pressed.
        const auto stroke = m_keyboard.strokeTyping(shortcut.symbol);
        const auto code = stroke ? virtualKeyOfKeycode(stroke->keycode) : std::nullopt;
        if (!code)
            continue;
        const auto modifiers = shortcut.modifiers | (stroke->withShift ? shiftKey : 0);
        entries.push_back(PropertyList::Dictionary{{"kHISymbolicHotKeyEnabled", true},
                                                   {"kHISymbolicHotKeyCode", std::uint32_t{*code}},
                                                   {"kHISymbolicHotKeyModifiers", modifiers}});
    }
    hotKeys = std::move(entries);
    return noErr;
}

std::optional<XHotKeyCenter::Grab> XHotKeyCenter::grabFor(std::uint32_t keyCode,
                                                          std::uint32_t modifiers) const {
    const auto keycode = keycodeOfVirtualKey(keyCode);
    if (!keycode)
        return std::nullopt;
    const std::pair<std::uint32_t, std::uint16_t> bits[] = {
        {shiftKey, XCB_MOD_MASK_SHIFT},
        {controlKey, XCB_MOD_MASK_CONTROL},
        {optionKey, m_keyboard.modifiers().alt},
        {cmdKey, m_keyboard.modifiers().super},
    };
    Grab grab{*keycode, 0};
    for (const auto& [modifier, bit] : bits) {
        if ((modifiers & modifier) && bit == 0)
            return std::nullopt; // this keyboard has no such key
        if (modifiers & modifier)
            grab.modifiers |= bit;
    }
    return grab;
}

/// Every combination of the lock keys.
std::vector<std::uint16_t> XHotKeyCenter::lockStates() const {
    std::vector<std::uint16_t> states;
    const auto locks = m_takenWith.locks;
    for (std::uint16_t state = locks;; state = static_cast<std::uint16_t>((state - 1) & locks)) {
        // The next smaller subset of the locks; none of them is the last.
        states.push_back(state);
        if (state == 0)
            return states;
    }
}

// A grab that another client has is refused; those that went through are then given back.
bool XHotKeyCenter::take(const Grab& grab) {
    // All are sent before the first answer is waited for, which makes it one round trip.
    std::vector<xcb_void_cookie_t> cookies;
    for (const auto locks : lockStates())
        cookies.push_back(xcb_grab_key_checked(m_x.raw(), false, m_x.root(),
                                               static_cast<std::uint16_t>(grab.modifiers | locks),
                                               grab.keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    bool isWhole = true;
    for (const auto cookie : cookies)
        isWhole &= !XReply<xcb_generic_error_t>(xcb_request_check(m_x.raw(), cookie));
    if (!isWhole)
        release(grab);
    m_x.flush();
    return isWhole;
}

void XHotKeyCenter::release(const Grab& grab) {
    for (const auto locks : lockStates())
        xcb_ungrab_key(m_x.raw(), grab.keycode, m_x.root(),
                       static_cast<std::uint16_t>(grab.modifiers | locks));
    m_x.flush();
}

bool XHotKeyCenter::isUsed(const Grab& grab) const {
    return std::ranges::any_of(m_registrations, [&](const auto& entry) { return entry.second.grab == grab; });
}

// Keys keep their places when the layout changes; modifiers may not.
void XHotKeyCenter::renew() {
    if (m_keyboard.modifiers() == m_takenWith)
        return;
    // All are let go before the first is taken anew: it may be the combination that another one had.
    for (const auto& entry : m_registrations)
        if (entry.second.grab)
            release(*entry.second.grab);
    m_takenWith = m_keyboard.modifiers();
    for (auto& [reference, registration] : m_registrations) {
        const auto grab = grabFor(registration.keyCode, registration.modifiers);
        registration.grab = grab && (isUsed(*grab) || take(*grab)) ? grab : std::nullopt;
    }
}

// A key that is held down is pressed again and again. While the keyboard is ours, all other keys come here
// too.
void XHotKeyCenter::pressed(const xcb_key_press_event_t& event) {
    // With detectable auto-repeat (see XKeyboard) no release comes in between.
    if (m_pressed.contains(event.detail))
        return;
    const auto modifiers = static_cast<std::uint16_t>(event.state & allModifiers & ~m_takenWith.locks);
    const Grab grab{event.detail, modifiers};
    for (const auto& [reference, registration] : m_registrations) {
        if (registration.grab != grab)
            continue;
        m_pressed.emplace(event.detail, reference);
        post(reference, kEventHotKeyPressed);
    }
    if (!m_pressed.contains(event.detail) || m_grabbedBy || m_holdsKeyboard)
        return;
    // The server may have sent it before it let go of the keyboard for us: then its release would get lost.
    if (static_cast<std::int32_t>(m_x.requestBeforeEvent() - m_letGoAt) < 0)
        followRemaining();
    else
        m_grabbedBy = event.detail;
}

void XHotKeyCenter::released(xcb_keycode_t keycode) {
    const auto [first, last] = m_pressed.equal_range(keycode);
    for (auto entry = first; entry != last; ++entry)
        post(entry->second, kEventHotKeyReleased);
    m_pressed.erase(first, last);
    if (m_grabbedBy == keycode) {
        m_grabbedBy.reset();
        if (!m_pressed.empty())
            followRemaining();
    }
    if (m_holdsKeyboard && m_pressed.empty()) {
        m_holdsKeyboard = false;
        m_letGoAt = xcb_ungrab_keyboard(m_x.raw(), XCB_CURRENT_TIME).sequence;
        m_x.flush();
    }
}

// The grab has ended with the release of the key that began it. The release of a second hot key that is still
// held would go to somebody else, so the keyboard is kept until then.
void XHotKeyCenter::followRemaining() {
    m_holdsKeyboard = true;
    const auto grabCookie = xcb_grab_keyboard(m_x.raw(), false, m_x.root(), XCB_CURRENT_TIME,
                                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const auto keymapCookie = xcb_query_keymap(m_x.raw());
    const XReply<xcb_grab_keyboard_reply_t> grab(xcb_grab_keyboard_reply(m_x.raw(), grabCookie, nullptr));
    const XReply<xcb_query_keymap_reply_t> keymap(xcb_query_keymap_reply(m_x.raw(), keymapCookie, nullptr));
    const bool isOurs = grab && grab->status == XCB_GRAB_STATUS_SUCCESS;
    // Released before the keyboard was ours, a key tells us no more: what is down is asked for.
    const auto remaining = m_pressed;
    for (const auto& entry : remaining)
        if (!isOurs || !keymap || !isDown(*keymap, entry.first))
            released(entry.first);
}

// Through the main queue: events are read while others wait for the server as well.
void XHotKeyCenter::post(EventHotKeyRef hotKey, std::uint32_t kind) {
    m_queue.async([this, hotKey, kind, alive = std::weak_ptr(m_isAlive)] {
        const bool isAlive = !alive.expired();
        const auto entry = isAlive ? m_registrations.find(hotKey) : m_registrations.end();
        if (!isAlive || entry == m_registrations.end())
            return;
        const HotKeyEvent event{kind, entry->second.id};
        for (const auto& handler : std::vector(m_handlers))
            if (handler(&event) == noErr)
                return;
    });
}

} // namespace tavro
