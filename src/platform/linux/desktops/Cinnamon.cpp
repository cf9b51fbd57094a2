#include "platform/linux/desktops/Cinnamon.h"

#include "platform/linux/desktops/SettingsText.h"

namespace tavro {

std::optional<std::filesystem::path> Cinnamon::wallpaper(const std::string&) {
    const auto file = m_settings.get("org.cinnamon.desktop.background", "picture-uri");
    return file ? localFile(file->toString()) : std::nullopt;
}

} // namespace tavro
