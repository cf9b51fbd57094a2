#pragma once

#include "platform/linux/bus/GSettings.h"
#include "platform/linux/desktops/Desktop.h"

namespace tavro {

/// GNOME, and Budgie, which keeps the same settings: GSettings.
class Gnome final : public Desktop {
public:
    explicit Gnome(const GSettings& settings)
        : m_settings(settings) {}
    std::optional<DesktopBackground> background(const DesktopScreen& screen) override;
    std::vector<DesktopShortcut> shortcuts() override;
    std::optional<DesktopLook> look() override;
    QString fileOfLook() const override { return "dconf/user"; }

private:
    const GSettings& m_settings;
};

} // namespace tavro
