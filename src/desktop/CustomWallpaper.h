#pragma once

#include <filesystem>
#include <optional>

namespace tavro {

/// The name of the one picture that is kept in the user's Documents folder.
inline constexpr const char* customWallpaperName = "wallpaper.png";

/// Before the first picture is stored: a file of the user's own that has its name gets another one, and one
/// line in the log says which. False when it cannot be renamed; the line says that.
bool setUsersOwnAside(const std::filesystem::path& destination);

/// The stored picture, where one is in use and still there. Main thread only.
std::optional<std::filesystem::path> customWallpaperURL();

} // namespace tavro
