#include "platform/linux/desktops/Plasma.h"

#include "platform/linux/desktops/SettingsText.h"

#include <QStringList>

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

} // namespace

std::optional<std::filesystem::path> Plasma::wallpaper(const std::string&) {
    return localFile(valueInSection(textOfConfiguration("plasma-org.kde.plasma.desktop-appletsrc"),
                                    "[Wallpaper][org.kde.image][General]", "Image"));
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
