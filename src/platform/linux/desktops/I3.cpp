#include "platform/linux/desktops/I3.h"

#include "platform/linux/desktops/SettingsText.h"

#include <QStringList>

namespace tavro {

// Lines "bindsym $mod+Shift+e exec ..." after "set $mod Mod4". Those in the braces of a mode hold only there.
std::vector<DesktopShortcut> I3::shortcuts() {
    auto text = textOfConfiguration("i3/config");
    if (text.isEmpty())
        text = QString::fromUtf8(beginOfFile("/etc/i3/config"));
    std::vector<DesktopShortcut> shortcuts;
    std::map<QString, QString, std::greater<>> variables; // a longer name before one that it begins with
    bool isInMode = false;
    for (const auto& line : text.split('\n')) {
        auto words = line.simplified().split(' ');
        const auto command = words.takeFirst();
        if (command == "mode" || command == "}")
            isInMode = command == "mode";
        if (command == "set" && words.size() == 2)
            variables[words[0]] = words[1];
        while (!words.isEmpty() && words.front().startsWith("--"))
            words.removeFirst();
        if (command != "bindsym" || isInMode || words.isEmpty())
            continue;
        for (const auto& [name, value] : variables)
            words.front().replace(name, value);
        if (const auto shortcut = parseJoinedKeys(words.front(), '+'))
            shortcuts.push_back(*shortcut);
    }
    return shortcuts;
}

} // namespace tavro
