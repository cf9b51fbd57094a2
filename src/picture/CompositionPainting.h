#pragma once

#include "picture/Composition.h"

#include <QImage>

namespace tavro {

/// The screen's picture; of a null picture, the colours alone. Null where it would not stay within the
/// bounds.
QImage draw(const Composition& composition, const QImage& picture);

} // namespace tavro
