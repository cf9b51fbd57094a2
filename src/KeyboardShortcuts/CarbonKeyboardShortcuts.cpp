#include "KeyboardShortcuts/CarbonKeyboardShortcuts.h"

#include "platform/input/HotKeyCenter.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"

#include <algorithm>
#include <map>
#include <utility>

namespace tavro::KeyboardShortcuts {

namespace {

constexpr std::uint32_t hotKeySignature = fourCharacterCode("ZQHK");
constexpr EventTypeSpec hotKeyEventSpec[] = {{kEventClassKeyboard, kEventHotKeyPressed},
                                             {kEventClassKeyboard, kEventHotKeyReleased}};

struct HotKey {
    Shortcut shortcut;
    std::int64_t carbonHotKeyId;
    EventHotKeyRef carbonHotKey;
    CarbonKeyboardShortcuts::Handler onKeyDown;
    CarbonKeyboardShortcuts::Handler onKeyUp;
};

struct Registrations {
    std::map<std::int64_t, HotKey> hotKeys;
    std::int64_t hotKeyId = 0;
    EventHandlerRef eventHandler = EventHandlerRef::none;
};

Registrations& state() {
    return Process::current().shared<Registrations>();
}

HotKeyCenter& center() {
    return machine().hotKeyCenter();
}

// Other libraries in the process may have hot keys of their own; the signature says whose an event is.
OSStatus handleEvent(const HotKeyEvent* event) {
    if (!event)
        return eventNotHandledErr;
    if (!event->directObject)
        return event->directObject.error();
    if (event->directObject->signature != hotKeySignature)
        return eventNotHandledErr;
    const auto entry = state().hotKeys.find(event->directObject->id);
    if (entry == state().hotKeys.end())
        return eventNotHandledErr;
    const auto hotKey = entry->second; // which its handler may unregister
    switch (event->kind) {
    case kEventHotKeyPressed:
        hotKey.onKeyDown(hotKey.shortcut);
        return noErr;
    case kEventHotKeyReleased:
        hotKey.onKeyUp(hotKey.shortcut);
        return noErr;
    }
    return eventNotHandledErr;
}

// With the first registration: a program without shortcuts listens to nothing.
void installHandlerOnce() {
    if (state().eventHandler != EventHandlerRef::none)
        return;
    const auto target = center().getEventDispatcherTarget();
    if (target != EventTargetRef::none)
        center().installEventHandler(target, &handleEvent, hotKeyEventSpec, state().eventHandler);
}

template <class Condition>
void unregisterWhere(Condition condition) {
    const auto snapshot = state().hotKeys;
    for (const auto& [id, hotKey] : snapshot) {
        if (!condition(hotKey.shortcut))
            continue;
        center().unregisterEventHotKey(hotKey.carbonHotKey);
        state().hotKeys.erase(id);
    }
}

using Dictionary = PropertyList::Dictionary;

template <class T>
const T* member(const Dictionary& dictionary, const char* name) {
    const auto found = dictionary.find(name);
    return found == dictionary.end() ? nullptr : found->second.as<T>();
}

/// An entry of the system's list, where it is in use and complete.
std::optional<Shortcut> symbolicShortcut(const Dictionary& entry) {
    const auto* isEnabled = member<bool>(entry, "kHISymbolicHotKeyEnabled");
    const auto* code = member<std::int64_t>(entry, "kHISymbolicHotKeyCode");
    const auto* modifiers = member<std::int64_t>(entry, "kHISymbolicHotKeyModifiers");
    if (!isEnabled || !*isEnabled || !code || !modifiers)
        return std::nullopt;
    return Shortcut(*code, *modifiers);
}

} // namespace

// A refused registration is no error here: the shortcut stays stored, and works again where the other program
// lets go of the keys.
void CarbonKeyboardShortcuts::registerShortcut(const Shortcut& shortcut, Handler onKeyDown, Handler onKeyUp) {
    const auto id = ++state().hotKeyId;
    if (!std::in_range<std::uint32_t>(shortcut.carbonKeyCode()) || !std::in_range<std::uint32_t>(id))
        return;
    auto reference = EventHotKeyRef::none;
    const auto status = center().registerEventHotKey(static_cast<std::uint32_t>(shortcut.carbonKeyCode()),
                                                     static_cast<std::uint32_t>(shortcut.carbonModifiers()),
                                                     {hotKeySignature, static_cast<std::uint32_t>(id)},
                                                     center().getEventDispatcherTarget(), 0, reference);
    if (status != noErr || reference == EventHotKeyRef::none)
        return;
    state().hotKeys.emplace(id, HotKey{shortcut, id, reference, std::move(onKeyDown), std::move(onKeyUp)});
    installHandlerOnce();
}

void CarbonKeyboardShortcuts::unregister(const Shortcut& shortcut) {
    unregisterWhere([&](const Shortcut& registered) { return registered == shortcut; });
}

void CarbonKeyboardShortcuts::unregisterAll() {
    unregisterWhere([](const Shortcut&) { return true; });
}

void CarbonKeyboardShortcuts::refreshSystemShortcuts() {
    center().refreshSymbolicHotKeys();
}

std::vector<Shortcut> CarbonKeyboardShortcuts::systemShortcuts() {
    std::optional<PropertyList> hotKeys;
    if (center().copySymbolicHotKeys(hotKeys) != noErr || !hotKeys)
        return {};
    const auto* entries = hotKeys->as<PropertyList::Array>();
    if (!entries)
        return {};
    std::vector<Shortcut> shortcuts;
    for (const auto& entry : *entries) {
        const auto* dictionary = entry.as<Dictionary>();
        if (!dictionary)
            return {};
        if (const auto shortcut = symbolicShortcut(*dictionary))
            shortcuts.push_back(*shortcut);
    }
    return shortcuts;
}

bool CarbonKeyboardShortcuts::isTakenBySystem(const Shortcut& shortcut) {
    const auto taken = systemShortcuts();
    return std::ranges::find(taken, shortcut) != taken.end();
}

} // namespace tavro::KeyboardShortcuts
