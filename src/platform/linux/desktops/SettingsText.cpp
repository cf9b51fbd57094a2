#include "platform/linux/desktops/SettingsText.h"

#include <QColor>
#include <QFile>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QUrl>

namespace tavro {

QByteArray beginOfFile(const QString& file) {
    constexpr qint64 largest = 1 << 20;
    QFile source(file);
    return !file.isEmpty() && source.open(QIODevice::ReadOnly) ? source.read(largest) : QByteArray();
}

QString textOfConfiguration(const QString& file) {
    return QString::fromUtf8(
        beginOfFile(QStandardPaths::locate(QStandardPaths::GenericConfigLocation, file)));
}

SettingsText parseSettingsText(const QString& text) {
    SettingsText settings;
    auto* section = &settings[QString()];
    for (const auto& line : text.split('\n')) {
        const auto equals = line.indexOf('=');
        if (line.startsWith('['))
            section = &settings[line.trimmed()];
        else if (equals > 0)
            section->emplace(line.left(equals).trimmed(), line.mid(equals + 1).trimmed());
    }
    return settings;
}

QString valueOf(const SettingsText& settings, const QString& header, const QString& key) {
    const auto section = settings.find(header);
    if (section == settings.end())
        return {};
    const auto value = section->second.find(key);
    return value == section->second.end() ? QString() : value->second;
}

std::optional<std::filesystem::path> localFile(const QString& location) {
    const QUrl url(location);
    const auto path = url.isLocalFile() ? url.toLocalFile() : location;
    if (!path.startsWith('/'))
        return std::nullopt;
    return std::filesystem::path(path.toStdString());
}

std::uint32_t parseColor(const QString& text) {
    static const QRegularExpression numbers("^(?:rgba?\\()?(\\d+), *(\\d+), *(\\d+)");
    const auto match = numbers.match(text);
    const auto color = match.hasMatch() ? QColor(match.captured(1).toInt(), match.captured(2).toInt(),
                                                 match.captured(3).toInt())
                                        : QColor(text);
    constexpr QRgb withoutAlpha = 0xFFFFFF;
    return color.isValid() ? color.rgb() & withoutAlpha : 0;
}

bool isDarkColor(std::uint32_t color) {
    constexpr int middle = 128;
    return qGray(color) < middle;
}

std::optional<QFont> parseFont(const QString& text) {
    QFont font;
    constexpr double greatest = 100;
    const bool isFont = text.contains(',') && font.fromString(text);
    return isFont && font.pointSizeF() > 0 && font.pointSizeF() <= greatest ? std::optional(font)
                                                                            : std::nullopt;
}

} // namespace tavro
