#include "platform/linux/desktops/Gnome.h"

#include "platform/linux/desktops/SettingsText.h"

namespace tavro {

namespace {

constexpr auto interface = "org.gnome.desktop.interface";
constexpr auto background = "org.gnome.desktop.background";
constexpr auto mediaKeys = "org.gnome.settings-daemon.plugins.media-keys";
constexpr auto customKeybinding = "org.gnome.settings-daemon.plugins.media-keys.custom-keybinding";

} // namespace

std::optional<std::filesystem::path> Gnome::wallpaper(const std::string&) {
    auto settings = m_settings.list({interface, background});
    const bool isDark = settings[interface]["color-scheme"] == "prefer-dark";
    return localFile(settings[background][isDark ? "picture-uri-dark" : "picture-uri"].toString());
}

std::vector<DesktopShortcut> Gnome::shortcuts() {
    const auto deadline = m_settings.deadline();
    auto all =
        m_settings.list({"org.gnome.desktop.wm.keybindings", "org.gnome.shell.keybindings",
                         "org.gnome.mutter.keybindings", "org.gnome.mutter.wayland.keybindings", mediaKeys},
                        deadline);
    // What the user has added: a list of paths, each with a binding.
    QStringList added;
    for (const auto& path : all[mediaKeys]["custom-keybindings"].toStringList())
        added += QString(customKeybinding) + ':' + path;
    for (const auto& [schema, settings] : m_settings.list(added, deadline))
        all[schema] = {{"binding", settings["binding"]}};
    return parseAccelerators(all);
}

} // namespace tavro
