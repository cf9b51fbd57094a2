#include "platform/simulated/menubar/SimulatedStatusBar.h"

#include "platform/simulated/menubar/SimulatedStatusItem.h"

#include <algorithm>

namespace tavro {

SimulatedStatusBar::SimulatedStatusBar(Journal& journal, SimulatedApplication& application)
    : m_journal(journal)
    , m_application(application) {}

std::shared_ptr<StatusItem> SimulatedStatusBar::statusItem(double length) {
    m_journal.record("statusBar.statusItem", length);
    std::optional<SimulatedStatusBarButton> button;
    if (!failButtons)
        button.emplace([this](auto menu) { open(std::move(menu)); }, m_journal);
    auto item = std::make_shared<SimulatedStatusItem>(std::move(button), m_journal);
    m_items.push_back(item);
    return item;
}

std::vector<std::shared_ptr<SimulatedStatusItem>> SimulatedStatusBar::items() const {
    std::vector<std::shared_ptr<SimulatedStatusItem>> standing;
    for (const auto& reference : m_items)
        if (auto item = reference.lock())
            standing.push_back(std::move(item));
    return standing;
}

void SimulatedStatusBar::click(SimulatedStatusItem& item, EventType type, unsigned modifierFlags) {
    if (m_openMenu)
        closeMenu();
    else if (item.menu())
        open(item.menu());
    else if (auto* button = item.button())
        m_application.deliver({type, modifierFlags}, [&] { button->receive(type); });
}

void SimulatedStatusBar::open(std::shared_ptr<Menu> menu) {
    m_openMenu = std::move(menu);
}

void SimulatedStatusBar::closeMenu() {
    if (const auto menu = std::exchange(m_openMenu, nullptr); menu && menu->delegate)
        menu->delegate->menuDidClose(*menu);
}

bool SimulatedStatusBar::choose(const std::string& title) {
    if (!m_openMenu)
        return false;
    const auto item = std::ranges::find(m_openMenu->items, title, &MenuItem::title);
    if (item == m_openMenu->items.end() || !item->action)
        return false;
    const auto action = item->action;
    closeMenu();
    action();
    return true;
}

void SimulatedStatusBar::endProcess() {
    m_items.clear();
    m_openMenu = nullptr;
}

} // namespace tavro
