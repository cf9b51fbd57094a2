#pragma once

#include "platform/storage/Image.h"

#include <QIcon>
#include <QPixmap>

namespace tavro {

/// Whether a picture of this name is compiled into the program.
bool hasIcon(const NamedImage& image);
/// A picture of the application's own, crisp at any size.
QIcon toolkitIcon(const NamedImage& image);
/// Its shape in one colour, of a size in points.
QPixmap tinted(const NamedImage& image, QSize size, const QColor& color, double devicePixelRatio);

} // namespace tavro
