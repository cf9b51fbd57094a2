#include "desktop/CustomWallpaper.h"

#include "app/Constants.h"
#include "platform/FileManager.h"
#include "platform/Machine.h"
#include "platform/Process.h"
#include "platform/UserDefaults.h"

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
