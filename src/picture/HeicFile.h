#pragma once

#include <QImage>

#include <string_view>

namespace tavro {

/// Loads what decoding needs.
void loadHeicDecoders();
/// Whether the file says that it is a HEIC picture (ISO/IEC 23008-12).
bool isHeic(std::string_view bytes);
/// A null image when there is no whole picture with sides of that length at most.
QImage decodeHeic(std::string_view bytes, int longestSide);

} // namespace tavro
