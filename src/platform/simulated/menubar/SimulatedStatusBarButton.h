#pragma once

#include "platform/menubar/StatusBar.h"
#include "platform/simulated/process/Journal.h"

#include <functional>
#include <memory>
#include <optional>

namespace tavro {

/// The button of a status item.
class SimulatedStatusBarButton final : public StatusBarButton {
public:
    using MenuOpener = std::function<void(std::shared_ptr<Menu>)>;

    SimulatedStatusBarButton(MenuOpener openMenu, Journal& journal);

    void setAction(std::function<void()> action) override;
    void sendActionOn(unsigned mask) override;
    void setImage(std::optional<NamedImage> image) override;
    Point positionOnScreen() const override { return {}; }
    Rect frame() const override { return {{0, 0}, {28, 22}}; }
    void popUp(const std::shared_ptr<Menu>& menu, Point location) override;

    /// Sends the action if this event type is one that does.
    void receive(EventType type) const;
    const std::optional<NamedImage>& image() const { return m_image; }

private:
    MenuOpener m_openMenu;
    Journal& m_journal;
    std::function<void()> m_action;
    unsigned m_mask = eventMask(EventType::leftMouseUp);
    std::optional<NamedImage> m_image;
};

} // namespace tavro
