#include "platform/linux/desktops/Xfce.h"

#include "platform/linux/desktops/SettingsText.h"

namespace tavro {

std::optional<std::filesystem::path> Xfce::wallpaper(const std::string& connector) {
    const auto monitor = QString::fromStdString(connector).remove(' ');
    const auto property = "/backdrop/screen0/monitor" + monitor + "/workspace0/last-image";
    const auto image = m_xfconf.get("xfce4-desktop", property);
    return image ? localFile(image->toString()) : std::nullopt;
}

std::vector<DesktopShortcut> Xfce::shortcuts() {
    const auto reply = m_xfconf.list("xfce4-keyboard-shortcuts");
    return reply ? parseXfceShortcuts(*reply) : std::vector<DesktopShortcut>();
}

// Of commands and of the window manager, each with defaults and a copy of them that the user changes. Texts
// are actions; the members of an action stand one level deeper.
std::vector<DesktopShortcut> parseXfceShortcuts(const QVariantMap& properties) {
    std::vector<DesktopShortcut> shortcuts;
    for (const QString base : {"/commands/", "/xfwm4/"}) {
        const bool isCustom = properties.value(base + "custom/override").toBool();
        const QString folder = base + (isCustom ? "custom/" : "default/");
        for (auto entry = properties.begin(); entry != properties.end(); ++entry) {
            const auto name = entry.key().mid(folder.size());
            const bool isAction = entry.key().startsWith(folder) && !name.contains('/') &&
                                  entry->userType() == QMetaType::QString && !entry->toString().isEmpty();
            if (const auto shortcut = isAction ? parseAccelerator(name) : std::nullopt)
                shortcuts.push_back(*shortcut);
        }
    }
    return shortcuts;
}

} // namespace tavro
