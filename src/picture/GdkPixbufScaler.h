#pragma once

#include <QImage>
#include <QRect>

namespace tavro {

/// The part of a picture that has been scaled to a size, as GdkPixbuf does it bilinearly. Null where there is
/// no memory for it.
QImage scaledByGdkPixbuf(const QImage& picture, QSize size, const QRect& part);

} // namespace tavro
