#pragma once

#include "platform/storage/Image.h"

#include <QImage>

namespace tavro {

/// The same pixels as an image of the toolkit, not copied.
QImage toolkitImage(const Image& image);
/// An image of the toolkit's, whose pixels are shared where they have our format.
Image imageOf(const QImage& image);

} // namespace tavro
