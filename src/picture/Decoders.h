#pragma once

#include <QImage>

#include <functional>
#include <string_view>

namespace tavro {

/// The size that is wanted of a picture, by its own; a drawing has all sizes.
using WantedSize = std::function<QSize(QSize own, bool isDrawing)>;

/// Loads all that `decode` uses, so that it opens no file.
void loadDecoders();
/// The picture of a PNG, JPEG, WebP, HEIC or SVG file, chosen by its first bytes and turned as it says; a
/// null image for every other file, and for one that is not whole or not within PictureHeader's bounds. Not
/// every format can be decoded at another size than its own.
QImage decode(std::string_view file, const WantedSize& wanted);

} // namespace tavro
