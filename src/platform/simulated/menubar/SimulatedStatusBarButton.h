#pragma once

#include "platform/simulated/menubar/SimulatedStatusBar.h"

namespace tavro {

/// The button of a status item.
class SimulatedStatusBarButton final : public StatusBarButton {
public:
    SimulatedStatusBarButton(SimulatedStatusBar& statusBar, Journal& journal);

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
    SimulatedStatusBar& m_statusBar;
    Journal& m_journal;
    std::function<void()> m_action;
    unsigned m_mask = eventMask(EventType::leftMouseUp);
    std::optional<NamedImage> m_image;
};

} // namespace tavro
