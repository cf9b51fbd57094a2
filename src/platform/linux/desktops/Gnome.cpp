#include "platform/linux/desktops/Gnome.h"

#include "platform/linux/desktops/GnomeBackground.h"
#include "platform/linux/desktops/GnomeBindings.h"

namespace tavro {

namespace {

constexpr auto interface = "org.gnome.desktop.interface";
constexpr auto schemaOfBackground = "org.gnome.desktop.background";
constexpr auto mediaKeys = "org.gnome.settings-daemon.plugins.media-keys";
constexpr auto customKeybinding = "org.gnome.settings-daemon.plugins.media-keys.custom-keybinding";

} // namespace

std::optional<DesktopBackground> Gnome::background(const DesktopScreen& screen) {
    auto settings = m_settings.list({interface, schemaOfBackground});
    const auto found = settings.find(schemaOfBackground);
    if (found == settings.end())
        return std::nullopt;
    const bool isDark = settings[interface]["color-scheme"] == "prefer-dark";
    const auto picture = found->second[isDark ? "picture-uri-dark" : "picture-uri"].toString();
    auto background = withPresentPicture(parseGnomeBackground(found->second, picture), screen.pixels.size());
    background.style.scaler = BackgroundStyle::Scaler::texture;
    if (background.picture) // around which its window manager shows no colour
        background.style.colors = {};
    return background;
}

// Its themes are no longer named for that.
std::optional<DesktopLook> Gnome::look() {
    const auto scheme = m_settings.get(interface, "color-scheme");
    if (!scheme)
        return std::nullopt;
    return DesktopLook{scheme->toString() == "prefer-dark", std::nullopt};
}

std::vector<DesktopShortcut> Gnome::shortcuts() {
    const auto deadline = m_settings.deadline();
    auto all = m_settings.list({"org.gnome.desktop.wm.keybindings", "org.gnome.shell.keybindings",
                                "org.gnome.mutter.keybindings", "org.gnome.mutter.wayland.keybindings",
                                "org.gnome.metacity.keybindings", "org.gnome.gnome-flashback.keybindings",
                                mediaKeys},
                               deadline);
    // What the user has added: a list of paths, each with a binding.
    QStringList added;
    for (const auto& path : all[mediaKeys]["custom-keybindings"].toStringList())
        added += QString(customKeybinding) + ':' + path;
    all.merge(bindingsAt(m_settings, added, deadline));
    return parseAccelerators(all);
}

} // namespace tavro
