#pragma once

#include <QImage>

#include <string_view>

namespace tavro {

/// Loads all that `decode` uses, so that it opens no file.
void loadDecoders();
/// The picture of a PNG, JPEG, WebP or HEIC file, chosen by its first bytes and turned as it says; a null
/// image for every other file, and for one that is not whole or not within PictureHeader's bounds.
QImage decode(std::string_view file);

} // namespace tavro
