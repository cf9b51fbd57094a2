#pragma once

#include <filesystem>
#include <optional>

namespace tavro {

/// The name of the one picture that is kept in the user's Documents folder.
inline constexpr const char* customWallpaperName = "wallpaper.png";

/// The stored picture, where one is in use and still there. Main thread only.
std::optional<std::filesystem::path> customWallpaperURL();

} // namespace tavro
