#include "KeyboardShortcuts/KeyboardShortcuts.h"

#include "KeyboardShortcuts/CarbonKeyboardShortcuts.h"
#include "KeyboardShortcuts/ShortcutRecord.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/UserDefaults.h"

#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tavro::KeyboardShortcuts {

namespace {

using Handlers = std::unordered_map<Name, std::vector<Action>>;

struct Tables {
    Handlers keyDownHandlers;
    Handlers keyUpHandlers;
    std::unordered_set<Shortcut> registeredShortcuts;
    bool isPaused = false;
};

Tables& state() {
    return Process::current().shared<Tables>();
}

UserDefaults& userDefaults() {
    return machine().userDefaults();
}

// Two names may share a combination; the system gives it to a program once.
void registerOnce(const Shortcut& shortcut) {
    if (state().registeredShortcuts.insert(shortcut).second)
        CarbonKeyboardShortcuts::registerShortcut(shortcut, &handleOnKeyDown, &handleOnKeyUp);
}

void unregister(const Shortcut& shortcut) {
    CarbonKeyboardShortcuts::unregister(shortcut);
    state().registeredShortcuts.erase(shortcut);
}

void postChange(const Name& name) {
    Process::current().notificationCenter().post(shortcutByNameDidChange, {{"name", name}});
}

// Encoded first: what cannot be stored leaves everything as it was.
void set(const Shortcut& shortcut, const Name& name) {
    const auto record = encode(shortcut);
    if (const auto old = getShortcut(name))
        unregister(*old);
    registerOnce(shortcut);
    userDefaults().setObject(name.key(), record);
    postChange(name);
}

// False in the settings, and not nothing: a name with a default would get that back at the next launch.
void remove(const Name& name) {
    const auto old = getShortcut(name);
    if (!old)
        return;
    userDefaults().setObject(name.key(), false);
    unregister(*old);
    postChange(name);
}

/// An action may add handlers, so those of the moment are run.
void run(const Handlers& handlers, const Shortcut& shortcut) {
    if (state().isPaused)
        return;
    const auto ofTheMoment = handlers; // NOLINT(performance-unnecessary-copy-initialization)
    for (const auto& [name, actions] : ofTheMoment)
        if (getShortcut(name) == shortcut)
            for (const auto& action : actions)
                action();
}

} // namespace

Name::Name(std::string rawValue, std::optional<Shortcut> defaultShortcut)
    : m_rawValue(std::move(rawValue))
    , m_defaultShortcut(defaultShortcut) {
    if (m_defaultShortcut && !userDefaults().object(key()))
        setShortcut(m_defaultShortcut, *this);
}

std::optional<Shortcut> getShortcut(const Name& name) {
    const auto stored = userDefaults().object(name.key());
    const auto* record = stored ? stored->as<std::string>() : nullptr;
    return record ? decode(*record) : std::nullopt;
}

void setShortcut(const std::optional<Shortcut>& shortcut, const Name& name) {
    if (shortcut)
        set(*shortcut, name);
    else
        remove(name);
}

void reset(std::span<const Name> names) {
    for (const auto& name : names)
        setShortcut(name.defaultShortcut(), name);
}

void onKeyDown(const Name& name, Action action) {
    state().keyDownHandlers[name].push_back(std::move(action));
    enable(name);
}

void onKeyUp(const Name& name, Action action) {
    state().keyUpHandlers[name].push_back(std::move(action));
    enable(name);
}

void enable(const Name& name) {
    if (const auto shortcut = getShortcut(name))
        registerOnce(*shortcut);
}

void disable(const Name& name) {
    if (const auto shortcut = getShortcut(name))
        unregister(*shortcut);
}

bool isPaused() {
    return state().isPaused;
}

void setPaused(bool isPaused) {
    state().isPaused = isPaused;
}

void handleOnKeyDown(const Shortcut& shortcut) {
    run(state().keyDownHandlers, shortcut);
}

void handleOnKeyUp(const Shortcut& shortcut) {
    run(state().keyUpHandlers, shortcut);
}

} // namespace tavro::KeyboardShortcuts
