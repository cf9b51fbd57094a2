#pragma once

#include "KeyboardShortcuts/Shortcut.h"

#include <optional>
#include <string>

namespace tavro::KeyboardShortcuts {

/// Names a shortcut whose combination the user chooses. Two with the same raw value are the same name.
class Name {
public:
    explicit Name(std::string rawValue)
        : m_rawValue(std::move(rawValue)) {}
    /// A default is set, stored and announced right away where nothing of any kind is stored for the name.
    Name(std::string rawValue, std::optional<Shortcut> defaultShortcut);

    const std::string& rawValue() const { return m_rawValue; }
    const std::optional<Shortcut>& defaultShortcut() const { return m_defaultShortcut; }
    /// Where user defaults keep its combination.
    std::string key() const { return "KeyboardShortcuts_" + m_rawValue; }

    bool operator==(const Name& other) const { return m_rawValue == other.m_rawValue; }

private:
    std::string m_rawValue;
    std::optional<Shortcut> m_defaultShortcut;
};

} // namespace tavro::KeyboardShortcuts

template <>
struct std::hash<tavro::KeyboardShortcuts::Name> {
    std::size_t operator()(const tavro::KeyboardShortcuts::Name& name) const noexcept {
        return std::hash<std::string>()(name.rawValue());
    }
};
