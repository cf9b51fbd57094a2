#include "platform/linux/desktops/Openbox.h"

#include "platform/linux/desktops/SettingsText.h"

#include <QXmlStreamReader>

namespace tavro {

// Of a chain of keys, the first one is taken from all programs: it holds the others.
std::vector<DesktopShortcut> openboxShortcuts(const QStringList& files) {
    QString text;
    for (const auto& file : files)
        if (text.isEmpty())
            text = textOfConfiguration("openbox/" + file);
    std::vector<DesktopShortcut> shortcuts;
    QXmlStreamReader xml(text);
    for (int chain = 0; !xml.atEnd();) {
        xml.readNext();
        if (xml.name() != u"keybind")
            continue;
        chain += xml.isStartElement() - xml.isEndElement();
        const auto keys = xml.attributes().value("key").toString().section(' ', 0, 0);
        if (const auto shortcut =
                xml.isStartElement() && chain == 1 ? parseJoinedKeys(keys, '-') : std::nullopt)
            shortcuts.push_back(*shortcut);
    }
    return shortcuts;
}

} // namespace tavro
