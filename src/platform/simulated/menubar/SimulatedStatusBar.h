#pragma once

#include "platform/menubar/StatusBar.h"
#include "platform/simulated/process/Journal.h"
#include "platform/simulated/process/SimulatedApplication.h"

#include <string>
#include <vector>

namespace tavro {

class SimulatedStatusItem;

/// The system's status bar, with a user who clicks. One menu can be open at a time.
class SimulatedStatusBar final : public StatusBar {
public:
    SimulatedStatusBar(Journal& journal, SimulatedApplication& application);

    std::shared_ptr<StatusItem> statusItem(double length) override;

    /// A fault: items that are made from now on have no button.
    bool failButtons = false;

    /// The items that stand, in the order in which they came.
    std::vector<std::shared_ptr<SimulatedStatusItem>> items() const;
    /// The user clicks an item. An open menu takes the click, and closes; an attached one opens; else the
    /// button gets the event, if it is there.
    void click(SimulatedStatusItem& item, EventType type, unsigned modifierFlags = 0);

    /// Opens a menu, which stands until the user chooses from it or closes it.
    void open(std::shared_ptr<Menu> menu);
    /// Null when none is open.
    const std::shared_ptr<Menu>& openMenu() const { return m_openMenu; }
    void closeMenu();
    /// Closes the menu, then does what the item says. False, and nothing happens, for an item that is not
    /// there or that is disabled.
    bool choose(const std::string& title);
    /// The process has ended, and took its items along.
    void endProcess();

private:
    Journal& m_journal;
    SimulatedApplication& m_application;
    std::vector<std::weak_ptr<SimulatedStatusItem>> m_items;
    std::shared_ptr<Menu> m_openMenu;
};

} // namespace tavro
