#pragma once

#include "platform/linux/desktops/Desktop.h"
#include "platform/linux/desktops/SettingsText.h"

namespace tavro {

/// What KDE's file "plasma-org.kde.plasma.desktop-appletsrc" has for a screen in an activity: the picture as
/// it stands there, the place of a file or of a package, or the package's name.
struct PlasmaWallpaper {
    QString picture;
    DesktopBackground background;
    bool isColor = false;
};
PlasmaWallpaper parsePlasmaWallpaper(const SettingsText& settings, int screen, const QString& activity);

/// Of a package's files, named by their sizes ("1920x1080.png"), the one that KDE shows on a screen of a
/// size.
QString preferredPicture(const QStringList& names, QSize size);

/// Of the text of KDE's file "kglobalshortcutsrc".
std::vector<DesktopShortcut> parsePlasmaShortcuts(const QString& text);

/// KDE Plasma: its files in the configuration folder.
class Plasma final : public Desktop {
public:
    std::optional<DesktopBackground> background(const DesktopScreen& screen) override;
    std::vector<DesktopShortcut> shortcuts() override;
    std::optional<DesktopLook> look() override;
    QString fileOfLook() const override { return "kdeglobals"; }
};

} // namespace tavro
