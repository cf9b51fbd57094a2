#pragma once

#include <QByteArray>
#include <QFont>
#include <QString>

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>

namespace tavro {

/// Values by their keys, in sections by their headers: "[General]", "[Containments][1][General]".
using SettingsText = std::map<QString, std::map<QString, QString>>;

/// The first megabyte of a file; empty where there is none.
QByteArray beginOfFile(const QString& file);
/// The same in the user's configuration folders.
QString textOfConfiguration(const QString& file);

/// Of the text of a file such as GLib and KDE write. The first of several lines for a key counts.
SettingsText parseSettingsText(const QString& text);
/// Empty where there is none.
QString valueOf(const SettingsText& settings, const QString& header, const QString& key);

/// A file that settings name, by its path or its URL.
std::optional<std::filesystem::path> localFile(const QString& location);

/// 0xRRGGBB, of "#rrggbb", "#rrrrggggbbbb", "rgb(1,2,3)", "1,2,3" or a name; black for what is none.
std::uint32_t parseColor(const QString& text);

/// Whether one writes in white on it.
bool isDarkColor(std::uint32_t color);

/// Of the toolkit's own writing: "Sans,11,-1,5,50,0,0,0,0,0". None for what is not.
std::optional<QFont> parseFont(const QString& text);

/// What stands at the place in the second list that the word has in the first.
template <class Value>
Value valueNamed(const QString& word, std::initializer_list<std::pair<const char*, Value>> values,
                 Value otherwise) {
    for (const auto& [name, value] : values)
        if (word == QLatin1String(name))
            return value;
    return otherwise;
}

} // namespace tavro
