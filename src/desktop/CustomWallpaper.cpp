#include "desktop/CustomWallpaper.h"

#include "app/Constants.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/FileManager.h"
#include "platform/storage/UserDefaults.h"

namespace tavro {

std::optional<std::filesystem::path> customWallpaperURL() {
    auto& machine = Process::current().machine();
    if (!machine.userDefaults().boolForKey(Constants::wallpaperFileKey))
        return std::nullopt;
    const auto documents = machine.fileManager().documentsFolder();
    if (!documents || !machine.fileManager().fileExists(*documents / customWallpaperName))
        return std::nullopt;
    return *documents / customWallpaperName;
}

} // namespace tavro
