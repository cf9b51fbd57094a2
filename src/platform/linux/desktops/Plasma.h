#pragma once

#include "platform/linux/desktops/Desktop.h"

namespace tavro {

/// KDE Plasma: its files in the configuration folder.
class Plasma final : public Desktop {
public:
    std::optional<std::filesystem::path> wallpaper(const std::string& connector) override;
    std::vector<DesktopShortcut> shortcuts() override;
};

} // namespace tavro
