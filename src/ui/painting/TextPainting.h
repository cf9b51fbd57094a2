#pragma once

class QPainter;
class QRectF;
class QString;

namespace tavro {

/// Draws a text in the painter's font, aligned by `Qt::Alignment` flags. Where it is too wide, it breaks at
/// words if there is room for more lines, in letters only as small as need be.
void paintFittedText(QPainter& painter, const QRectF& area, int alignment, const QString& text);

} // namespace tavro
