#pragma once

#include "platform/linux/desktops/Desktop.h"
#include "platform/linux/desktops/SettingsText.h"

namespace tavro {

/// Of a file of pcmanfm's for one monitor, on a workspace.
DesktopBackground parsePcmanfmBackground(const SettingsText& settings, int workspace);

/// LXDE, whose desktop is pcmanfm: the file of its profile.
class Lxde final : public Desktop {
public:
    std::optional<DesktopBackground> background(const DesktopScreen& screen) override;
    std::vector<DesktopShortcut> shortcuts() override;
};

} // namespace tavro
