#pragma once

#include "KeyboardShortcuts/Shortcut.h"

#include <functional>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>

/// Named shortcuts: what the user has chosen for them, and what happens when they are pressed. The state is
/// of the process; main thread only. What the system refuses to give us stays chosen, and is not asked for
/// again until it is chosen anew.
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

using Action = std::function<void()>;

/// Posted when the shortcut of a name has changed; the user info holds the `Name` under "name".
inline constexpr auto shortcutByNameDidChange = "KeyboardShortcuts_shortcutByNameDidChange";

/// What is stored for the name now.
std::optional<Shortcut> getShortcut(const Name& name);
/// Stores and takes the combination, or gives it up where there is none.
void setShortcut(const std::optional<Shortcut>& shortcut, const Name& name);
/// Back to the defaults, in order; a name without one loses its shortcut.
void reset(std::span<const Name> names);
inline void reset(std::initializer_list<Name> names) {
    reset(std::span(names.begin(), names.size()));
}

/// Adds an action and takes the name's combination. Actions run in the order in which they came.
void onKeyDown(const Name& name, Action action);
void onKeyUp(const Name& name, Action action);

/// Takes the stored combination, or lets go of it; what is stored stays.
void enable(const Name& name);
void disable(const Name& name);

/// While paused, no action runs.
bool isPaused();
void setPaused(bool isPaused);

/// A taken combination was pressed or released: runs the actions of each name that it is stored for now.
void handleOnKeyDown(const Shortcut& shortcut);
void handleOnKeyUp(const Shortcut& shortcut);

} // namespace tavro::KeyboardShortcuts

template <>
struct std::hash<tavro::KeyboardShortcuts::Name> {
    std::size_t operator()(const tavro::KeyboardShortcuts::Name& name) const noexcept {
        return std::hash<std::string>()(name.rawValue());
    }
};
