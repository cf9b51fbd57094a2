#include "ui/TextPainting.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QPainter>

namespace tavro {

void paintFittedText(QPainter& painter, const QRectF& area, int alignment, const QString& text) {
    auto font = painter.font();
    const auto width = QFontMetricsF(font, painter.device()).horizontalAdvance(text);
    if (width > area.width())
        font.setPixelSize(qMax(1, static_cast<int>(QFontInfo(font).pixelSize() * area.width() / width)));
    painter.save();
    painter.setFont(font);
    painter.drawText(area, alignment | Qt::TextSingleLine | Qt::TextDontClip, text);
    painter.restore();
}

} // namespace tavro
