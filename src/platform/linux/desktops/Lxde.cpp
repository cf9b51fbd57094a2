#include "platform/linux/desktops/Lxde.h"

#include "platform/linux/desktops/SettingsText.h"

namespace tavro {

// Its session starts pcmanfm with a profile of its own; without one, pcmanfm takes "default".
std::optional<std::filesystem::path> Lxde::wallpaper(const std::string&) {
    for (const QString profile : {"LXDE", "default"})
        if (auto file = localFile(valueInSection(
                textOfConfiguration("pcmanfm/" + profile + "/desktop-items-0.conf"), "[*]", "wallpaper")))
            return file;
    return std::nullopt;
}

} // namespace tavro
