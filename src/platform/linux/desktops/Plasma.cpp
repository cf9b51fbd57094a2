#include "platform/linux/desktops/Plasma.h"

#include "platform/linux/desktops/SettingsText.h"

#include <QColor>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QStringList>

#include <cmath>

namespace tavro {

namespace {

/// A field of a list that is separated by commas, where a backslash takes the next character's meaning away.
QString firstField(const QString& list) {
    QString field;
    for (qsizetype i = 0; i < list.size() && list[i] != ','; ++i) {
        const bool isEscape = list[i] == '\\' && i + 1 < list.size();
        if (isEscape && list[++i] == 't')
            field += '\t';
        else
            field += list[i];
    }
    return field;
}

/// Of the part that is a screen's desktop in an activity, where that is known.
QString headerOfDesktop(const SettingsText& settings, int screen, const QString& activity) {
    static const QRegularExpression containment("^\\[Containments\\]\\[\\d+\\]$");
    for (const auto& [header, values] : settings) {
        const auto ofActivity = valueOf(settings, header, "activityId");
        const bool isOfActivity = activity.isEmpty() || ofActivity.isEmpty() || ofActivity == activity;
        if (isOfActivity && containment.match(header).hasMatch() &&
            valueOf(settings, header, "lastScreen") == QString::number(screen) &&
            valueOf(settings, header, "formfactor") == "0") // no panel
            return header;
    }
    return {};
}

bool hasDarkColors(const SettingsText& globals) {
    constexpr int middle = 192;
    const auto window = valueOf(globals, "[Colors:Window]", "BackgroundNormal");
    return !window.isEmpty() && qGray(parseColor(window)) < middle;
}

/// The look's, until the user chooses one.
QString defaultPicture(const SettingsText& globals) {
    auto look = valueOf(globals, "[KDE]", "LookAndFeelPackage");
    if (look.isEmpty())
        look = textOfConfiguration("kdedefaults/package").trimmed();
    if (look.isEmpty())
        look = "org.kde.breeze.desktop";
    const auto defaults = QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                                 "plasma/look-and-feel/" + look + "/contents/defaults");
    return valueOf(parseSettingsText(QString::fromUtf8(beginOfFile(defaults))), "[Wallpaper]", "Image");
}

/// Of a file's place, a package's, or a package's name; none where there is no picture.
std::optional<std::filesystem::path> fileOf(const QString& picture, QSize size, bool isDark) {
    const auto place = localFile(picture);
    const QFileInfo found(place ? QString::fromStdString(place->string())
                                : QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                                         "wallpapers/" + picture,
                                                         QStandardPaths::LocateDirectory));
    if (picture.isEmpty() || !found.exists())
        return std::nullopt;
    if (found.isFile())
        return found.filePath().toStdString();
    const auto preferredIn = [&](const char* folder) -> std::optional<std::filesystem::path> {
        const QDir images(found.filePath() + folder);
        const auto name = preferredPicture(images.entryList(QDir::Files), size);
        return name.isEmpty() ? std::nullopt : std::optional(images.filePath(name).toStdString());
    };
    const auto dark = isDark ? preferredIn("/contents/images_dark") : std::nullopt;
    return dark ? dark : preferredIn("/contents/images");
}

} // namespace

std::optional<DesktopBackground> Plasma::background(const DesktopScreen& screen) {
    const auto activity =
        valueOf(parseSettingsText(textOfConfiguration("kactivitymanagerdrc")), "[main]", "currentActivity");
    auto [picture, background, isColor] = parsePlasmaWallpaper(
        parseSettingsText(textOfConfiguration("plasma-org.kde.plasma.desktop-appletsrc")), screen.number,
        activity);
    if (isColor)
        return background;
    const auto globals = parseSettingsText(textOfConfiguration("kdeglobals"));
    const bool isDark = hasDarkColors(globals);
    background.picture = fileOf(picture, screen.pixels.size(), isDark);
    if (!background.picture)
        background.picture = fileOf(defaultPicture(globals), screen.pixels.size(), isDark);
    return background;
}

PlasmaWallpaper parsePlasmaWallpaper(const SettingsText& settings, int screen, const QString& activity) {
    using Scaling = BackgroundStyle::Scaling;
    PlasmaWallpaper wallpaper;
    auto& style = wallpaper.background.style;
    style.scaler = BackgroundStyle::Scaler::quick;
    const auto desktop = headerOfDesktop(settings, screen, activity);
    const auto plugin = valueOf(settings, desktop, "wallpaperplugin");
    const auto value = [&](const QString& key) {
        return valueOf(settings, desktop + "[Wallpaper][" + plugin + "][General]", key);
    };
    wallpaper.picture = value("Image"); // of a slide show, the one that is on
    wallpaper.isColor = plugin == "org.kde.color";
    const auto color = value("Color");
    style.colors[0] = parseColor(wallpaper.isColor && color.isEmpty() ? "#1d99f3" : color);
    style.scaling = valueNamed<Scaling>(
        value("FillMode"),
        {{"0", Scaling::stretched}, {"1", Scaling::fitted}, {"3", Scaling::tiled}, {"6", Scaling::centered}},
        Scaling::zoomed);
    return wallpaper;
}

// The shape counts most; a picture that has to be made larger counts as twice as far away.
QString preferredPicture(const QStringList& names, QSize size) {
    static const QRegularExpression sizeInName("^(\\d+)x(\\d+)\\.");
    constexpr double weightOfShape = 25000;
    const auto distance = [&](const QString& name) {
        const auto match = sizeInName.match(name);
        const auto width = match.captured(1).toDouble(), height = match.captured(2).toDouble();
        const auto more = width - size.width();
        const auto shape = height > 0 ? width / height : 0;
        return std::abs(shape - 1.0 * size.width() / size.height()) * weightOfShape +
               (more >= 0 ? more : -2 * more);
    };
    QString best;
    for (const auto& name : names)
        if (sizeInName.match(name).hasMatch() && (best.isEmpty() || distance(name) < distance(best)))
            best = name;
    return best;
}

// What no one has chosen is the look's.
std::optional<DesktopLook> Plasma::look() {
    DesktopLook look;
    for (const auto* file : {"kdedefaults/kdeglobals", "kdeglobals"}) {
        const auto globals = parseSettingsText(textOfConfiguration(file));
        if (const auto window = valueOf(globals, "[Colors:Window]", "BackgroundNormal"); !window.isEmpty())
            look.isDark = isDarkColor(parseColor(window));
        if (const auto font = parseFont(valueOf(globals, "[General]", "font")))
            look.font = font;
    }
    return look;
}

std::vector<DesktopShortcut> Plasma::shortcuts() {
    return parsePlasmaShortcuts(textOfConfiguration("kglobalshortcutsrc"));
}

// Lines "action=current,default,description"; "current" holds any number of combinations, tabs between them.
std::vector<DesktopShortcut> parsePlasmaShortcuts(const QString& file) {
    std::vector<DesktopShortcut> shortcuts;
    for (const auto& line : file.split('\n')) {
        const auto equals = line.indexOf('=');
        if (equals < 0 || line.startsWith('[') || line.startsWith("_k_friendly_name"))
            continue;
        for (const auto& text : firstField(line.mid(equals + 1)).split('\t'))
            if (const auto shortcut = parseKeySequence(text))
                shortcuts.push_back(*shortcut);
    }
    return shortcuts;
}

} // namespace tavro
