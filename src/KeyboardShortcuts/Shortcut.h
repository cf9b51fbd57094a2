#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tavro {

class Menu;
struct Event;
struct MenuItem;

namespace KeyboardShortcuts {

/// One key combination, in the form in which the system takes hot keys.
class Shortcut {
public:
    /// Of the modifiers, the four of the platform's mask are kept.
    Shortcut(std::int64_t carbonKeyCode, std::int64_t carbonModifiers);
    /// None unless the event is of a key that has a place.
    static std::optional<Shortcut> of(const Event& event);

    std::int64_t carbonKeyCode() const { return m_carbonKeyCode; }
    std::int64_t carbonModifiers() const { return m_carbonModifiers; }
    /// As modifier flags of an event.
    unsigned modifiers() const;

    bool operator==(const Shortcut&) const = default;

    /// The text of the key alone, by the keyboard layout; none where it has none.
    std::optional<std::string> keyText() const;
    /// The signs of the modifiers, then the key in upper case.
    std::string description() const;
    /// The same as keyboards and desktops name the keys: "Ctrl+Super+P".
    std::string names() const;
    /// The first item of the menu and its submenus, from the top, that is pressed by this combination, or
    /// null.
    const MenuItem* menuItemWithMatchingShortcut(const Menu& menu) const;

private:
    std::int64_t m_carbonKeyCode;
    std::int64_t m_carbonModifiers;
};

} // namespace KeyboardShortcuts
} // namespace tavro

template <>
struct std::hash<tavro::KeyboardShortcuts::Shortcut> {
    std::size_t operator()(const tavro::KeyboardShortcuts::Shortcut& shortcut) const noexcept;
};
