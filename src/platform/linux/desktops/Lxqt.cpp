#include "platform/linux/desktops/Lxqt.h"

#include "platform/linux/desktops/SettingsText.h"

#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

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

} // namespace tavro
