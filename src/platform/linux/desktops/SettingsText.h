#pragma once

#include <QString>

#include <filesystem>
#include <optional>

namespace tavro {

/// The first megabyte of a file in the user's configuration folders; empty where there is none.
QString textOfConfiguration(const QString& file);

/// The value of the first line `key=…` in sections whose header ends as given, such as "[General]"; empty
/// where there is none.
QString valueInSection(const QString& text, const QString& headerEnd, const QString& key);

/// A file that settings name, by its path or its URL.
std::optional<std::filesystem::path> localFile(const QString& location);

} // namespace tavro
