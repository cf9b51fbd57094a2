#pragma once

#include "desktop/CoverContent.h"

class QPainter;
class QRectF;

namespace tavro {

/// Draws what a cover shows.
void paintCover(const CoverContent& content, QPainter& painter, const QRectF& area);

} // namespace tavro
