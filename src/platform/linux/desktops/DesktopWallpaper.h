#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace tavro {

/// The picture that the running desktop is set to show on a monitor, by its connector's name: XFCE (xfconf),
/// GNOME, Cinnamon and MATE (GSettings), Plasma and pcmanfm (their configuration files). None where the
/// desktop is another one, shows no picture, or does not answer in time.
std::optional<std::filesystem::path> desktopWallpaper(const std::string& connector);

} // namespace tavro
