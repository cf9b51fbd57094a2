#pragma once

#include "platform/input/Event.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tavro {

class Menu;

/// What the owner of a menu is notified of. On the main thread.
class MenuDelegate {
public:
    virtual ~MenuDelegate() = default;
    virtual void menuDidClose(Menu& menu) = 0;
};

struct MenuItem {
    std::string title;
    /// An item without an action is shown disabled.
    std::function<void()> action;
    std::string keyEquivalent;
    /// With which modifiers it is pressed.
    unsigned keyEquivalentModifierMask = EventModifierFlags::command;
    std::shared_ptr<Menu> submenu = nullptr;
};

/// A menu of the application; a description, shown by the machine.
class Menu {
public:
    explicit Menu(std::string title)
        : title(std::move(title)) {}

    std::string title;
    std::vector<MenuItem> items;
    /// Not owned; may be null.
    MenuDelegate* delegate = nullptr;
};

} // namespace tavro
