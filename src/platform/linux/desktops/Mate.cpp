#include "platform/linux/desktops/Mate.h"

#include "platform/linux/desktops/GnomeBackground.h"

namespace tavro {

std::optional<DesktopBackground> Mate::background(const DesktopScreen& screen) {
    constexpr auto schema = "org.mate.background";
    const auto settings = m_settings.list({schema});
    const auto found = settings.find(schema);
    if (found == settings.end())
        return std::nullopt;
    return withPresentPicture(
        parseGnomeBackground(found->second, found->second["picture-filename"].toString()),
        screen.pixels.size());
}

std::vector<DesktopShortcut> Mate::shortcuts() {
    return parseAccelerators(
        m_settings.list({"org.mate.Marco.global-keybindings", "org.mate.Marco.window-keybindings",
                         "org.mate.SettingsDaemon.plugins.media-keys"}));
}

} // namespace tavro
