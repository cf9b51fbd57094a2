#include "desktop/CustomWallpaper.h"

#include "platform/process/Log.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/FileManager.h"
#include "platform/storage/Images.h"
#include "platform/storage/UserDefaults.h"
#include "settings/Constants.h"

namespace tavro {

namespace {

std::string firstFreeName(const std::filesystem::path& file) {
    for (int number = 1;; ++number) {
        auto name = file.stem().string() + '-' + std::to_string(number) + file.extension().string();
        if (!machine().fileManager().fileExists(file.parent_path() / name))
            return name;
    }
}

} // namespace

bool setUsersOwnAside(const std::filesystem::path& destination) {
    const bool hasStoredBefore = machine().userDefaults().object(Constants::wallpaperFileKey).has_value();
    if (hasStoredBefore || !machine().fileManager().fileExists(destination))
        return true;
    const auto name = firstFreeName(destination);
    const auto error = machine().fileManager().rename(destination, name);
    machine().log().print(error ? *error
                                : destination.string() + " was there already; it is now called " + name);
    return !error;
}

std::optional<std::filesystem::path> customWallpaperURL() {
    if (!machine().userDefaults().boolForKey(Constants::wallpaperFileKey))
        return std::nullopt;
    const auto documents = machine().fileManager().documentsFolder();
    if (!documents || !machine().fileManager().fileExists(*documents / customWallpaperName))
        return std::nullopt;
    return *documents / customWallpaperName;
}

PreparedWallpaper& PreparedWallpaper::shared() {
    return Process::current().shared<PreparedWallpaper>();
}

void PreparedWallpaper::prepare(const std::filesystem::path& file, std::function<void()> whenChanged) {
    if (file != m_file)
        forget();
    m_file = file;
    machine().images().load(
        file, Images::Detail::ofScreens,
        [file, before = m_image, whenChanged = std::move(whenChanged)](const std::optional<Image>& image) {
            auto& prepared = shared();
            if (file != prepared.m_file)
                return;
            prepared.m_image = image;
            const auto pixels = [](const auto& picture) { return picture ? picture->pixels : nullptr; };
            if (whenChanged && pixels(image) != pixels(before))
                whenChanged();
        });
}

std::optional<Image> PreparedWallpaper::image(const std::filesystem::path& file) const {
    return file == m_file ? m_image : std::nullopt;
}

} // namespace tavro
