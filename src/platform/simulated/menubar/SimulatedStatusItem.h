#pragma once

#include "platform/simulated/menubar/SimulatedStatusBarButton.h"

#include <optional>

namespace tavro {

/// An item in the status bar.
class SimulatedStatusItem final : public StatusItem {
public:
    /// None has no button.
    SimulatedStatusItem(std::optional<SimulatedStatusBarButton> button, Journal& journal);

    SimulatedStatusBarButton* button() override { return m_button ? &*m_button : nullptr; }
    void setMenu(std::shared_ptr<Menu> menu) override;
    /// This status bar asks for nothing in advance.
    void announceMenu(std::shared_ptr<Menu> menu) override;

    const std::shared_ptr<Menu>& menu() const { return m_menu; }

private:
    Journal& m_journal;
    std::optional<SimulatedStatusBarButton> m_button;
    std::shared_ptr<Menu> m_menu;
};

} // namespace tavro
