#include "KeyboardShortcuts/Shortcut.h"

#include "KeyboardShortcuts/Key.h"
#include "KeyboardShortcuts/UpperCase.h"
#include "platform/input/Event.h"
#include "platform/input/HotKeyCenter.h"
#include "platform/input/KeyboardLayout.h"
#include "platform/menubar/Menu.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"

#include <limits>
#include <unordered_map>

namespace tavro::KeyboardShortcuts {

namespace {

struct Modifier {
    std::uint32_t carbon;
    unsigned flag;
    const char *symbol, *name;
};

/// In the order in which they are shown.
constexpr Modifier modifierTable[] = {
    {controlKey, EventModifierFlags::control, "⌃", "Ctrl"},
    {optionKey, EventModifierFlags::option, "⌥", "Alt"},
    {shiftKey, EventModifierFlags::shift, "⇧", "Shift"},
    {cmdKey, EventModifierFlags::command, "⌘", "Super"},
};

unsigned flagsOf(std::int64_t carbonModifiers) {
    unsigned flags = 0;
    for (const auto& modifier : modifierTable)
        if (carbonModifiers & modifier.carbon)
            flags |= modifier.flag;
    return flags;
}

std::int64_t carbonModifiersOf(unsigned flags) {
    std::int64_t carbonModifiers = 0;
    for (const auto& modifier : modifierTable)
        if (flags & modifier.flag)
            carbonModifiers |= modifier.carbon;
    return carbonModifiers;
}

// Keys that print nothing, or whose character says less than a symbol.
const char* specialText(std::int64_t keyCode) {
    static const std::unordered_map<Key, const char*> texts{
        {Key::return_, "↩"},    {Key::delete_, "⌫"},    {Key::deleteForward, "⌦"}, {Key::end, "↘"},
        {Key::escape, "⎋"},     {Key::help, "?\u20DD"}, {Key::home, "↖"},          {Key::space, "⎵"},
        {Key::tab, "⇥"},        {Key::pageUp, "⇞"},     {Key::pageDown, "⇟"},      {Key::upArrow, "↑"},
        {Key::rightArrow, "→"}, {Key::downArrow, "↓"},  {Key::leftArrow, "←"},     {Key::f1, "F1"},
        {Key::f2, "F2"},        {Key::f3, "F3"},        {Key::f4, "F4"},           {Key::f5, "F5"},
        {Key::f6, "F6"},        {Key::f7, "F7"},        {Key::f8, "F8"},           {Key::f9, "F9"},
        {Key::f10, "F10"},      {Key::f11, "F11"},      {Key::f12, "F12"},         {Key::f13, "F13"},
        {Key::f14, "F14"},      {Key::f15, "F15"},      {Key::f16, "F16"},         {Key::f17, "F17"},
        {Key::f18, "F18"},      {Key::f19, "F19"},      {Key::f20, "F20"},
    };
    const auto entry = texts.find(Key{keyCode});
    return entry == texts.end() ? nullptr : entry->second;
}

// Of those that have a symbol, and no letters on it.
const char* specialName(std::int64_t keyCode) {
    static const std::unordered_map<Key, const char*> names{
        {Key::return_, "Return"},   {Key::delete_, "Backspace"},  {Key::deleteForward, "Delete"},
        {Key::end, "End"},          {Key::escape, "Escape"},      {Key::help, "Help"},
        {Key::home, "Home"},        {Key::space, "Space"},        {Key::tab, "Tab"},
        {Key::pageUp, "Page Up"},   {Key::pageDown, "Page Down"}, {Key::upArrow, "Up"},
        {Key::rightArrow, "Right"}, {Key::downArrow, "Down"},     {Key::leftArrow, "Left"},
    };
    const auto entry = names.find(Key{keyCode});
    return entry == names.end() ? nullptr : entry->second;
}

bool isPressedBy(const MenuItem& item, const Shortcut& shortcut) {
    return shortcut.keyText() == item.keyEquivalent && item.keyEquivalentModifierMask == shortcut.modifiers();
}

} // namespace

// By way of the flags: bits that are no modifier must not make two equal shortcuts differ.
Shortcut::Shortcut(std::int64_t carbonKeyCode, std::int64_t carbonModifiers)
    : m_carbonKeyCode(carbonKeyCode)
    , m_carbonModifiers(carbonModifiersOf(flagsOf(carbonModifiers))) {}

std::optional<Shortcut> Shortcut::of(const Event& event) {
    const bool isOfKey = event.type == EventType::keyDown || event.type == EventType::keyUp;
    if (!isOfKey || !event.keyCode)
        return std::nullopt;
    return Shortcut(*event.keyCode, carbonModifiersOf(event.modifierFlags));
}

unsigned Shortcut::modifiers() const {
    return flagsOf(m_carbonModifiers);
}

std::optional<std::string> Shortcut::keyText() const {
    if (const auto* text = specialText(m_carbonKeyCode))
        return text;
    if (m_carbonKeyCode < 0 || m_carbonKeyCode > std::numeric_limits<std::uint16_t>::max())
        return std::nullopt;
    const auto keyCode = static_cast<std::uint16_t>(m_carbonKeyCode);
    return machine().keyboardLayout().displayText(keyCode);
}

std::string Shortcut::description() const {
    std::string text;
    for (const auto& modifier : modifierTable)
        if (m_carbonModifiers & modifier.carbon)
            text += modifier.symbol;
    const auto key = keyText();
    return text + (key ? upperCase(*key) : "\uFFFD");
}

std::string Shortcut::names() const {
    std::string text;
    for (const auto& modifier : modifierTable)
        if (m_carbonModifiers & modifier.carbon)
            text += std::string(modifier.name) + '+';
    if (const auto* name = specialName(m_carbonKeyCode))
        return text + name;
    const auto key = keyText();
    return text + (key ? upperCase(*key) : "\uFFFD");
}

const MenuItem* Shortcut::menuItemWithMatchingShortcut(const Menu& menu) const {
    for (const auto& item : menu.items) {
        if (isPressedBy(item, *this))
            return &item;
        const auto* found = item.submenu ? menuItemWithMatchingShortcut(*item.submenu) : nullptr;
        if (found)
            return found;
    }
    return nullptr;
}

} // namespace tavro::KeyboardShortcuts

std::size_t std::hash<tavro::KeyboardShortcuts::Shortcut>::operator()(
    const tavro::KeyboardShortcuts::Shortcut& shortcut) const noexcept {
    constexpr std::size_t prime = 1099511628211u;
    const auto code = std::hash<std::int64_t>()(shortcut.carbonKeyCode());
    return code * prime ^ std::hash<std::int64_t>()(shortcut.carbonModifiers());
}
