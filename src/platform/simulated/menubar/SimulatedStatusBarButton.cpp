#include "platform/simulated/menubar/SimulatedStatusBarButton.h"

#include <utility>

namespace tavro {

SimulatedStatusBarButton::SimulatedStatusBarButton(MenuOpener openMenu, Journal& journal)
    : m_openMenu(std::move(openMenu))
    , m_journal(journal) {}

void SimulatedStatusBarButton::setAction(std::function<void()> action) {
    m_action = std::move(action);
}

void SimulatedStatusBarButton::sendActionOn(unsigned mask) {
    m_journal.record("statusBarButton.sendActionOn", mask);
    m_mask = mask;
}

void SimulatedStatusBarButton::setImage(std::optional<NamedImage> image) {
    m_journal.record("statusBarButton.setImage", image ? image->name : "none");
    m_image = std::move(image);
}

void SimulatedStatusBarButton::popUp(const std::shared_ptr<Menu>& menu, Point location) {
    m_journal.record("statusBarButton.popUp", menu->title, location);
    m_openMenu(menu);
}

void SimulatedStatusBarButton::receive(EventType type) const {
    if (m_action && (m_mask & eventMask(type)))
        m_action();
}

} // namespace tavro
