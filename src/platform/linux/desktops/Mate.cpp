#include "platform/linux/desktops/Mate.h"

#include "platform/linux/desktops/SettingsText.h"

namespace tavro {

std::optional<std::filesystem::path> Mate::wallpaper(const std::string&) {
    const auto file = m_settings.get("org.mate.background", "picture-filename");
    return file ? localFile(file->toString()) : std::nullopt;
}

std::vector<DesktopShortcut> Mate::shortcuts() {
    return parseAccelerators(
        m_settings.list({"org.mate.Marco.global-keybindings", "org.mate.Marco.window-keybindings",
                         "org.mate.SettingsDaemon.plugins.media-keys"}));
}

} // namespace tavro
