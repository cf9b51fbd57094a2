#pragma once

class QPainter;
class QRectF;
class QString;

namespace tavro {

/// Draws one line in the painter's font, aligned by `Qt::Alignment` flags; smaller where it would be too
/// wide.
void paintFittedText(QPainter& painter, const QRectF& area, int alignment, const QString& text);

} // namespace tavro
