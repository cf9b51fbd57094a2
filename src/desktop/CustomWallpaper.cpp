#include "desktop/CustomWallpaper.h"

#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/FileManager.h"
#include "platform/storage/UserDefaults.h"
#include "settings/Constants.h"

namespace tavro {

std::optional<std::filesystem::path> customWallpaperURL() {
    if (!machine().userDefaults().boolForKey(Constants::wallpaperFileKey))
        return std::nullopt;
    const auto documents = machine().fileManager().documentsFolder();
    if (!documents || !machine().fileManager().fileExists(*documents / customWallpaperName))
        return std::nullopt;
    return *documents / customWallpaperName;
}

} // namespace tavro
