#include "platform/linux/desktops/Lxde.h"

#include "platform/linux/desktops/Openbox.h"
#include "platform/linux/desktops/SettingsText.h"

namespace tavro {

// Its session starts pcmanfm with a profile of its own; without one, pcmanfm takes "default". What nobody has
// set for a monitor stands in the file for all.
std::optional<DesktopBackground> Lxde::background(const DesktopScreen& screen) {
    for (const QString profile : {"LXDE", "default"}) {
        const auto folder = "pcmanfm/" + profile + '/';
        const auto own =
            textOfConfiguration(folder + "desktop-items-" + QString::number(screen.number) + ".conf");
        const auto text = own.isEmpty() ? textOfConfiguration(folder + "pcmanfm.conf") : own;
        if (!text.isEmpty())
            return parsePcmanfmBackground(parseSettingsText(text), screen.workspace);
    }
    return std::nullopt;
}

std::vector<DesktopShortcut> Lxde::shortcuts() {
    return openboxShortcuts({"lxde-rc.xml", "LXDE/rc.xml", "rc.xml"});
}

DesktopBackground parsePcmanfmBackground(const SettingsText& settings, int workspace) {
    using Scaling = BackgroundStyle::Scaling;
    const auto value = [&](const QString& key) {
        const auto ofMonitor = valueOf(settings, "[*]", key);
        return ofMonitor.isEmpty() ? valueOf(settings, "[desktop]", key) : ofMonitor;
    };
    const auto mode = value("wallpaper_mode");
    DesktopBackground background;
    background.isOfWorkspace = value("wallpaper_common") == "0";
    if (mode != "color" && mode != "0")
        background.picture = localFile(
            value(background.isOfWorkspace ? "wallpaper" + QString::number(workspace) : "wallpaper"));
    background.spansScreens = mode == "screen";
    background.style = {valueNamed<Scaling>(mode,
                                            {{"stretch", Scaling::stretched},
                                             {"fit", Scaling::fitted},
                                             {"center", Scaling::centered},
                                             {"tile", Scaling::tiled},
                                             {"crop", Scaling::zoomed},
                                             {"screen", Scaling::stretched}},
                                            Scaling::fitted),
                        BackgroundStyle::Shading::solid,
                        BackgroundStyle::Scaler::gdkPixbuf,
                        {parseColor(value("desktop_bg"))}};
    return background;
}

} // namespace tavro
