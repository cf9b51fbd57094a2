#include "platform/simulated/menubar/SimulatedControlStrip.h"

#include <algorithm>
#include <utility>

namespace tavro {

void SimulatedControlStrip::showsCloseBoxWhenFrontMost(bool shows) {
    m_journal.record("controlStrip.showsCloseBoxWhenFrontMost", shows);
}

void SimulatedControlStrip::setPresence(const std::string& identifier, bool isPresent) {
    m_journal.record("controlStrip.setPresence", identifier, isPresent);
    if (isPresent)
        m_present.insert(identifier);
    else
        m_present.erase(identifier);
}

void SimulatedControlStrip::addSystemTrayItem(std::shared_ptr<CustomTouchBarItem> item) {
    m_journal.record("controlStrip.addSystemTrayItem", item->identifier());
    if (std::ranges::find(m_tray, item, &Entry::item) != m_tray.end())
        return;
    auto observation = item->viewDidChange([this, item = item.get()] { update(*item); });
    m_tray.push_back({std::move(item), {}, std::move(observation)});
    update(*m_tray.back().item);
}

void SimulatedControlStrip::removeSystemTrayItem(const std::shared_ptr<CustomTouchBarItem>& item) {
    m_journal.record("controlStrip.removeSystemTrayItem", item->identifier());
    std::erase_if(m_tray, [&](const auto& entry) { return entry.item == item; });
}

std::vector<TouchBarButton> SimulatedControlStrip::shown() const {
    std::vector<TouchBarButton> buttons;
    for (const auto& entry : m_tray)
        if (entry.item->view() && m_present.contains(entry.item->identifier()))
            buttons.push_back(entry.look);
    return buttons;
}

void SimulatedControlStrip::endProcess() {
    m_tray.clear();
    m_present.clear();
}

void SimulatedControlStrip::update(const CustomTouchBarItem& item) {
    for (auto& entry : m_tray)
        if (entry.item.get() == &item && item.view())
            entry.look = *item.view();
}

} // namespace tavro
