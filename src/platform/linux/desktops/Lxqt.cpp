#include "platform/linux/desktops/Lxqt.h"

#include "platform/linux/desktops/SettingsText.h"

#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

namespace tavro {

// Written by the toolkit's own class, which puts letters beyond ASCII as numbers.
std::optional<std::filesystem::path> Lxqt::wallpaper(const std::string&) {
    constexpr qint64 largest = 1 << 20;
    const auto file =
        QStandardPaths::locate(QStandardPaths::GenericConfigLocation, "pcmanfm-qt/lxqt/settings.conf");
    if (file.isEmpty() || QFileInfo(file).size() > largest)
        return std::nullopt;
    return localFile(QSettings(file, QSettings::IniFormat).value("Desktop/Wallpaper").toString());
}

} // namespace tavro
