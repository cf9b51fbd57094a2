#pragma once

#include "platform/linux/bus/GSettings.h"
#include "platform/linux/desktops/Desktop.h"

namespace tavro {

/// Cinnamon: GSettings.
class Cinnamon final : public Desktop {
public:
    explicit Cinnamon(const GSettings& settings)
        : m_settings(settings) {}
    std::optional<DesktopBackground> background(const DesktopScreen& screen) override;
    std::vector<DesktopShortcut> shortcuts() override;

private:
    const GSettings& m_settings;
};

} // namespace tavro
