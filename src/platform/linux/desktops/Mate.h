#pragma once

#include "platform/linux/bus/GSettings.h"
#include "platform/linux/desktops/Desktop.h"

namespace tavro {

/// MATE: GSettings.
class Mate final : public Desktop {
public:
    explicit Mate(const GSettings& settings)
        : m_settings(settings) {}
    std::optional<DesktopBackground> background(const DesktopScreen& screen) override;
    std::vector<DesktopShortcut> shortcuts() override;

private:
    const GSettings& m_settings;
};

} // namespace tavro
