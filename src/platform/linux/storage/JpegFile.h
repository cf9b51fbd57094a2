#pragma once

#include <filesystem>

namespace tavro {

/// Whether the file is a JPEG picture (ITU-T T.81) that stops before its end: the toolkit shows such a one,
/// with the rest in grey.
bool isCutOffJpeg(const std::filesystem::path& file);

} // namespace tavro
