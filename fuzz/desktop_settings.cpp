// What desktops say of their own shortcuts and wallpapers: replies of xfconf, listings of GSettings, files of
// KDE, pcmanfm and others.
#include "platform/linux/bus/GSettings.h"
#include "platform/linux/desktops/GnomeBackground.h"
#include "platform/linux/desktops/Lxde.h"
#include "platform/linux/desktops/Plasma.h"
#include "platform/linux/desktops/Xfce.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tavro;
    const auto text = QString::fromUtf8(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size));
    QVariantMap properties; // "KEY VALUE", where "true" is no text
    for (const auto& line : text.split('\n')) {
        const auto value = line.section(' ', 1);
        properties[line.section(' ', 0, 0)] = value == "true" ? QVariant(true) : QVariant(value);
    }
    (void)parseXfceShortcuts(properties);
    (void)parseAccelerators({{"schema", parseSettings("schema", text)}});
    (void)parsePlasmaShortcuts(text);
    (void)parseXfceBackground(properties, {});
    (void)parseGnomeBackground(parseSettings("schema", text), text);
    (void)pictureOfSlideShow(text.toUtf8(), QDateTime(), {4, 3});
    const auto settings = parseSettingsText(text);
    (void)parsePcmanfmBackground(settings, 0);
    (void)localFile(parsePlasmaWallpaper(settings, 0, {}).picture);
    (void)preferredPicture(text.split('\n'), {4, 3});
    return 0;
}
