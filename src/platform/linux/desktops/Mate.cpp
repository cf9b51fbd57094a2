#include "platform/linux/desktops/Mate.h"

#include "platform/linux/desktops/GnomeBackground.h"
#include "platform/linux/desktops/GnomeBindings.h"

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

// What the user has added stands at numbered paths, of which there is no list: its settings program takes the
// first that is free.
std::vector<DesktopShortcut> Mate::shortcuts() {
    constexpr int most = 16;
    const auto deadline = m_settings.deadline();
    auto all = m_settings.list({"org.mate.Marco.global-keybindings", "org.mate.Marco.window-keybindings",
                                "org.mate.SettingsDaemon.plugins.media-keys"},
                               deadline);
    QStringList added;
    for (int i = 0; i < most; ++i)
        added << QString("org.mate.control-center.keybinding:/org/mate/desktop/keybindings/custom%1/").arg(i);
    all.merge(bindingsAt(m_settings, added, deadline));
    return parseAccelerators(all);
}

} // namespace tavro
