#pragma once

#include <string_view>

namespace tavro {

/// Whether a JPEG picture (ITU-T T.81) stops before its end: the toolkit shows such a one, with the rest in
/// grey.
bool isCutOffJpeg(std::string_view bytes);

} // namespace tavro
