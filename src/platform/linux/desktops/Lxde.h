#pragma once

#include "platform/linux/desktops/Desktop.h"

namespace tavro {

/// LXDE, whose desktop is pcmanfm: the file of its profile.
class Lxde final : public Desktop {
public:
    std::optional<std::filesystem::path> wallpaper(const std::string& connector) override;
};

} // namespace tavro
