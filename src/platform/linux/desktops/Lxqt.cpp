#include "platform/linux/desktops/Lxqt.h"

#include "platform/linux/desktops/Openbox.h"
#include "platform/linux/desktops/SettingsText.h"

#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QUrl>

namespace tavro {

// Written by the toolkit's own class, which puts letters beyond ASCII as numbers.
std::optional<DesktopBackground> Lxqt::background(const DesktopScreen&) {
    using Scaling = BackgroundStyle::Scaling;
    constexpr qint64 largest = 1 << 20;
    const auto file =
        QStandardPaths::locate(QStandardPaths::GenericConfigLocation, "pcmanfm-qt/lxqt/settings.conf");
    if (file.isEmpty() || QFileInfo(file).size() > largest)
        return std::nullopt;
    QSettings settings(file, QSettings::IniFormat);
    settings.beginGroup("Desktop");
    const auto mode = settings.value("WallpaperMode").toString();
    const bool isSlideShow = settings.value("SlideShowInterval").toInt() > 0 &&
                             !settings.value("WallpaperDirectory").toString().isEmpty();
    DesktopBackground background;
    if (mode != "none")
        background.picture = localFile(settings.value(isSlideShow ? "LastSlide" : "Wallpaper").toString());
    const bool isOfScreen = settings.value("PerScreenWallpaper").toBool();
    background.spansScreens = !isOfScreen || mode == "tile";
    background.style.scaling = valueNamed<Scaling>(mode,
                                                   {{"fit", Scaling::fitted},
                                                    {"center", Scaling::centered},
                                                    {"tile", Scaling::tiled},
                                                    {"zoom", Scaling::zoomed}},
                                                   Scaling::stretched);
    if (isOfScreen)
        background.style.scaler = BackgroundStyle::Scaler::toolkitRoundingUp;
    background.style.colors[0] = parseColor(settings.value("BgColor").toString());
    return background;
}

std::optional<DesktopLook> Lxqt::look() {
    const auto settings = parseSettingsText(textOfConfiguration("lxqt/lxqt.conf"));
    const auto window = valueOf(settings, "[Palette]", "window_color");
    return DesktopLook{!window.isEmpty() && isDarkColor(parseColor(window)),
                       parseFont(valueOf(settings, "[Qt]", "font").remove('"'))};
}

// Its own stand in headers: "[Control%2BAlt%2BT.1]". The window manager's come on top.
std::vector<DesktopShortcut> Lxqt::shortcuts() {
    const auto manager =
        valueOf(parseSettingsText(textOfConfiguration("lxqt/session.conf")), "[General]", "window_manager");
    auto shortcuts = manager.isEmpty() || manager.contains("openbox") ? openboxShortcuts({"rc.xml"})
                                                                      : std::vector<DesktopShortcut>();
    const auto own = parseSettingsText(textOfConfiguration("lxqt/globalkeyshortcuts.conf"));
    for (const auto& [header, values] : own) {
        const auto keys = QUrl::fromPercentEncoding(header.mid(1).section('.', 0, -2).toUtf8());
        const bool isOn = valueOf(own, header, "Enabled") != "false";
        if (const auto shortcut = isOn ? parseJoinedKeys(keys, '+') : std::nullopt)
            shortcuts.push_back(*shortcut);
    }
    return shortcuts;
}

} // namespace tavro
