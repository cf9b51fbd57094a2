#pragma once

#include "platform/storage/Image.h"
#include "platform/windows/Color.h"

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QPixmap>

namespace tavro {

/// The same pixels as an image of the toolkit, not copied.
QImage toolkitImage(const Image& image);
/// A picture of the application's own, crisp at any size.
QIcon toolkitIcon(const NamedImage& image);
QColor toolkitColor(const Color& color);
/// Its shape in one colour, of a size in points.
QPixmap tinted(const NamedImage& image, QSize size, const QColor& color, double devicePixelRatio);

} // namespace tavro
