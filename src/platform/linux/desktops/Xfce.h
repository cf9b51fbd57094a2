#pragma once

#include "platform/linux/bus/Xfconf.h"
#include "platform/linux/desktops/Desktop.h"

namespace tavro {

/// Of the properties in XFCE's channel "xfce4-desktop".
DesktopBackground parseXfceBackground(const QVariantMap& properties, const DesktopScreen& screen);
/// Of the properties in XFCE's channel "xfce4-keyboard-shortcuts".
std::vector<DesktopShortcut> parseXfceShortcuts(const QVariantMap& properties);

/// XFCE: xfconf, over the bus.
class Xfce final : public Desktop {
public:
    explicit Xfce(BoundedBus& bus)
        : m_xfconf(bus) {}
    std::optional<DesktopBackground> background(const DesktopScreen& screen) override;
    std::vector<DesktopShortcut> shortcuts() override;

private:
    Xfconf m_xfconf;
};

} // namespace tavro
