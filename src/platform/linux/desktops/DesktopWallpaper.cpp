#include "platform/linux/desktops/DesktopWallpaper.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusReply>
#include <QFile>
#include <QStandardPaths>
#include <QUrl>

#include <gio/gio.h>

#include <array>
#include <memory>

namespace tavro {

namespace {

namespace fs = std::filesystem;

constexpr int answerMilliseconds = 500;

std::optional<fs::path> fileAt(const QString& location) {
    const QUrl url(location);
    const auto path = url.isLocalFile() ? url.toLocalFile() : location;
    if (!path.startsWith('/'))
        return std::nullopt;
    return fs::path(path.toStdString());
}

std::optional<fs::path> xfceWallpaper(const std::string& connector) {
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface()->isServiceRegistered("org.xfce.Xfconf"))
        return std::nullopt;
    QDBusInterface xfconf("org.xfce.Xfconf", "/org/xfce/Xfconf", "org.xfce.Xfconf", bus);
    xfconf.setTimeout(answerMilliseconds);
    auto monitor = QString::fromStdString(connector).remove(' ');
    const auto property = "/backdrop/screen0/monitor" + monitor + "/workspace0/last-image";
    const QDBusReply<QDBusVariant> reply = xfconf.call("GetProperty", "xfce4-desktop", property);
    return reply.isValid() ? fileAt(reply.value().variant().toString()) : std::nullopt;
}

/// A text of GSettings. The library ends the process for a schema that is not installed, so it is looked up.
QString gsetting(const char* schemaId, const char* key) {
    struct Unref {
        void operator()(GSettingsSchema* schema) const { g_settings_schema_unref(schema); }
        void operator()(GSettings* settings) const { g_object_unref(settings); }
    };
    auto* source = g_settings_schema_source_get_default();
    if (!source)
        return {};
    const std::unique_ptr<GSettingsSchema, Unref> schema(
        g_settings_schema_source_lookup(source, schemaId, true));
    if (!schema || !g_settings_schema_has_key(schema.get(), key))
        return {};
    const std::unique_ptr<GSettings, Unref> settings(g_settings_new(schemaId));
    const std::unique_ptr<char, decltype(&g_free)> text(g_settings_get_string(settings.get(), key), &g_free);
    return QString::fromUtf8(text.get());
}

std::optional<fs::path> gnomeWallpaper(const std::string&) {
    const bool isDark = gsetting("org.gnome.desktop.interface", "color-scheme") == "prefer-dark";
    return fileAt(gsetting("org.gnome.desktop.background", isDark ? "picture-uri-dark" : "picture-uri"));
}

std::optional<fs::path> cinnamonWallpaper(const std::string&) {
    return fileAt(gsetting("org.cinnamon.desktop.background", "picture-uri"));
}

std::optional<fs::path> mateWallpaper(const std::string&) {
    return fileAt(gsetting("org.mate.background", "picture-filename"));
}

/// The value of the first line `key=…` in a section whose header ends in the given way.
QString valueInFile(const QString& file, const QString& sectionEnd, const QString& key) {
    constexpr qint64 largestFile = 1 << 20;
    QFile source(QStandardPaths::locate(QStandardPaths::GenericConfigLocation, file));
    if (!source.open(QIODevice::ReadOnly))
        return {};
    bool inSection = false;
    for (const auto& line : QString::fromUtf8(source.read(largestFile)).split('\n')) {
        if (line.startsWith('['))
            inSection = line.trimmed().endsWith(sectionEnd);
        else if (inSection && line.startsWith(key + '='))
            return line.mid(key.size() + 1).trimmed();
    }
    return {};
}

std::optional<fs::path> plasmaWallpaper(const std::string&) {
    return fileAt(valueInFile("plasma-org.kde.plasma.desktop-appletsrc",
                              "[Wallpaper][org.kde.image][General]", "Image"));
}

std::optional<fs::path> lxdeWallpaper(const std::string&) {
    return fileAt(valueInFile("pcmanfm/LXDE/desktop-items-0.conf", "[*]", "wallpaper"));
}

} // namespace

std::optional<fs::path> desktopWallpaper(const std::string& connector) {
    using Reader = std::optional<fs::path> (*)(const std::string&);
    constexpr std::pair<const char*, Reader> readers[] = {
        {"XFCE", &xfceWallpaper},    {"GNOME", &gnomeWallpaper}, {"X-Cinnamon", &cinnamonWallpaper},
        {"MATE", &mateWallpaper},    {"KDE", &plasmaWallpaper},  {"LXDE", &lxdeWallpaper},
        {"Budgie", &gnomeWallpaper},
    };
    const auto desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(':');
    for (const auto& [name, reader] : readers)
        if (desktops.contains(QLatin1String(name), Qt::CaseInsensitive))
            return reader(connector);
    return std::nullopt;
}

} // namespace tavro
