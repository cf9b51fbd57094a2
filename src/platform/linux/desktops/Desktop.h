#pragma once

#include "platform/linux/desktops/DesktopShortcut.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tavro {

/// What is particular to one desktop environment, by its settings of the moment. One of which nothing is
/// known has no picture and no shortcuts. For one thread, which an answer holds up for one bound at most.
class Desktop {
public:
    virtual ~Desktop() = default;
    /// The picture that it is set to show on a monitor, by its connector's name ("HDMI-1"). None where it
    /// shows none, or does not answer in time.
    virtual std::optional<std::filesystem::path> wallpaper(const std::string& /*connector*/) {
        return std::nullopt;
    }
    /// The combinations that it uses itself. Those that cannot be read are left out.
    virtual std::vector<DesktopShortcut> shortcuts() { return {}; }
};

} // namespace tavro
