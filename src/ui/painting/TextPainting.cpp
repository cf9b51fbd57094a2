#include "ui/painting/TextPainting.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QPainter>

namespace tavro {

void paintFittedText(QPainter& painter, const QRectF& area, int alignment, const QString& text) {
    const int flags = alignment | Qt::TextWordWrap | Qt::TextDontClip;
    auto font = painter.font();
    const auto isTooLarge = [&] {
        const QFontMetricsF metrics(font, painter.device());
        const auto needed = metrics.boundingRect(area, flags, text);
        // Not by the font's line spacing: another font may stand in for the letters that it lacks.
        const bool isOneLine =
            needed.height() <= metrics.boundingRect(area, Qt::TextSingleLine, text).height();
        return needed.width() > area.width() || (!isOneLine && needed.height() > area.height());
    };
    for (int size = QFontInfo(font).pixelSize(); size > 1 && isTooLarge();)
        font.setPixelSize(--size);
    painter.save();
    painter.setFont(font);
    painter.drawText(area, flags, text);
    painter.restore();
}

} // namespace tavro
