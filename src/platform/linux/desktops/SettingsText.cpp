#include "platform/linux/desktops/SettingsText.h"

#include <QFile>
#include <QStandardPaths>
#include <QStringList>
#include <QUrl>

namespace tavro {

QString textOfConfiguration(const QString& file) {
    constexpr qint64 largest = 1 << 20;
    QFile source(QStandardPaths::locate(QStandardPaths::GenericConfigLocation, file));
    return source.open(QIODevice::ReadOnly) ? QString::fromUtf8(source.read(largest)) : QString();
}

QString valueInSection(const QString& text, const QString& headerEnd, const QString& key) {
    bool inSection = false;
    for (const auto& line : text.split('\n')) {
        if (line.startsWith('['))
            inSection = line.trimmed().endsWith(headerEnd);
        else if (inSection && line.startsWith(key + '='))
            return line.mid(key.size() + 1).trimmed();
    }
    return {};
}

std::optional<std::filesystem::path> localFile(const QString& location) {
    const QUrl url(location);
    const auto path = url.isLocalFile() ? url.toLocalFile() : location;
    if (!path.startsWith('/'))
        return std::nullopt;
    return std::filesystem::path(path.toStdString());
}

} // namespace tavro
