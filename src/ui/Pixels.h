#pragma once

#include "platform/Color.h"
#include "platform/Image.h"

#include <QColor>
#include <QIcon>
#include <QImage>

namespace tavro {

/// The same pixels as an image of the toolkit, not copied.
QImage toolkitImage(const Image& image);
/// A picture of the application's own, crisp at any size.
QIcon toolkitIcon(const NamedImage& image);
QColor toolkitColor(const Color& color);

} // namespace tavro
