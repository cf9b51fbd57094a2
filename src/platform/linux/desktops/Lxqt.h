#pragma once

#include "platform/linux/desktops/Desktop.h"

namespace tavro {

/// LXQt, whose desktop is pcmanfm-qt: the file of its profile.
class Lxqt final : public Desktop {
public:
    std::optional<DesktopBackground> background(const DesktopScreen& screen) override;
    std::vector<DesktopShortcut> shortcuts() override;
    std::optional<DesktopLook> look() override;
    QString fileOfLook() const override { return "lxqt/lxqt.conf"; }
};

} // namespace tavro
