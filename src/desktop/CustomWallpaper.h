#pragma once

#include "platform/storage/Image.h"

#include <filesystem>
#include <functional>
#include <optional>

namespace tavro {

/// The name of the one picture that is kept in the user's Documents folder.
inline constexpr const char* customWallpaperName = "wallpaper.png";

/// Before the first picture is stored: a file of the user's own that has its name gets another one, and one
/// line in the log says which. False when it cannot be renamed; the line says that.
bool setUsersOwnAside(const std::filesystem::path& destination);

/// The stored picture, where one is in use and still there. Main thread only.
std::optional<std::filesystem::path> customWallpaperURL();

/// The stored picture for the covers, which cannot wait for its file: it is read ahead, in the background,
/// and kept. Main thread only.
class PreparedWallpaper {
public:
    static PreparedWallpaper& shared();

    /// Reads the file where it has changed since. The block runs if there is another picture then.
    void prepare(const std::filesystem::path& file, std::function<void()> whenChanged = {});
    void forget() { *this = {}; }
    /// None when the file is no picture, or has not been read yet.
    std::optional<Image> image(const std::filesystem::path& file) const;

private:
    std::filesystem::path m_file;
    std::optional<Image> m_image;
};

} // namespace tavro
