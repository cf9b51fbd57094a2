#pragma once

#include "platform/linux/desktops/Desktop.h"

namespace tavro {

/// LXQt, whose desktop is pcmanfm-qt: the file of its profile.
class Lxqt final : public Desktop {
public:
    std::optional<std::filesystem::path> wallpaper(const std::string& connector) override;
};

} // namespace tavro
