#pragma once

#include "platform/linux/desktops/Desktop.h"

namespace tavro {

/// i3, which has no wallpaper of its own: its configuration file.
class I3 final : public Desktop {
public:
    std::vector<DesktopShortcut> shortcuts() override;
};

} // namespace tavro
