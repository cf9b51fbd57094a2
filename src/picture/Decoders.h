#pragma once

#include "picture/SvgFile.h"

#include <QImage>

#include <string_view>

namespace tavro {

/// Loads all that `decode` uses, so that it opens no file.
void loadDecoders();
/// The picture of a PNG, JPEG, WebP, HEIC or SVG file, chosen by its first bytes and turned as it says; a null
/// image for every other file, and for one that is not whole or not within PictureHeader's bounds. Only a
/// drawing is made for a size.
QImage decode(std::string_view file, const SizeOfDrawing& wanted);

} // namespace tavro
