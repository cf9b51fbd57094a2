#pragma once

#include "picture/BackgroundStyle.h"

#include <QImage>
#include <QPainter>
#include <QSize>

namespace tavro {

/// The size at which Qt Quick loads a picture for an Image element whose source size is its own: made smaller
/// where that suffices, or larger for two of the ways to fill it. Drawings take any size.
QSize quickLoadedSize(BackgroundStyle::Scaling scaling, QSize picture, QSize element, bool isDrawing);

/// Draws a picture as such an element does, with its upper left corner at that of the painter.
void drawQuickImage(QPainter& painter, BackgroundStyle::Scaling scaling, const QImage& picture,
                    QSize element);

} // namespace tavro
