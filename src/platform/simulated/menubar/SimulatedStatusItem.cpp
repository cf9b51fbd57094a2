#include "platform/simulated/menubar/SimulatedStatusItem.h"

#include <string>

namespace tavro {

SimulatedStatusItem::SimulatedStatusItem(std::optional<SimulatedStatusBarButton> button, Journal& journal)
    : m_journal(journal)
    , m_button(std::move(button)) {}

void SimulatedStatusItem::setMenu(std::shared_ptr<Menu> menu) {
    m_journal.record("statusItem.setMenu", menu ? menu->title : "none");
    m_menu = std::move(menu);
}

void SimulatedStatusItem::announceMenu(std::shared_ptr<Menu> menu) {
    m_journal.record("statusItem.announceMenu", menu ? menu->title : "none");
}

} // namespace tavro
