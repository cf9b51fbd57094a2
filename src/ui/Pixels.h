#pragma once

#include "platform/Image.h"

#include <QImage>

namespace tavro {

/// The same pixels as an image of the toolkit, not copied.
QImage toolkitImage(const Image& image);

} // namespace tavro
