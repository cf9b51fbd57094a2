#include "ui/painting/AlertPainting.h"

#include "toolkit/Colors.h"
#include "toolkit/Icons.h"
#include "toolkit/Translation.h"
#include "ui/painting/TextPainting.h"

#include <QFontMetricsF>
#include <QIcon>
#include <QPainter>
#include <QPainterPath>

namespace tavro {

namespace {

/// A rectangle whose edges bend into the corners without a jump of the curvature: each curve begins further
/// away than the radius, and passes where the circle does.
QPainterPath continuousRoundedRect(const QRectF& area, double radius) {
    const double reach = 1.5287 * radius, pull = 0.2717 * radius;
    const QPointF right(1, 0), down(0, 1);
    QPainterPath path(area.topLeft() + reach * down);
    const auto corner = [&](const QPointF& point, const QPointF& from, const QPointF& to) {
        path.lineTo(point - reach * from);
        path.cubicTo(point - pull * from, point + pull * to, point + reach * to);
    };
    corner(area.topLeft(), -down, right);
    corner(area.topRight(), right, down);
    corner(area.bottomRight(), down, -right);
    corner(area.bottomLeft(), -right, -down);
    path.closeSubpath();
    return path;
}

} // namespace

void paintAlert(const AlertContent& content, QPainter& painter, const QRectF& area) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(continuousRoundedRect(area, AlertContent::cornerRadius),
                     toolkitColor(AlertContent::backgroundColor));

    const auto padding = AlertContent::padding;
    const auto inner = area.adjusted(padding, padding, -padding, -padding);
    const QFontMetricsF metrics(painter.font(), painter.device());
    constexpr auto side = AlertContent::imageSide;
    QRectF stack(0, 0, inner.width(), side + AlertContent::spacing + metrics.height());
    stack.moveCenter(inner.center());
    if (content.image) {
        const QRectF place(stack.center().x() - side / 2, stack.top(), side, side);
        toolkitIcon(*content.image).paint(&painter, place.toRect());
    }
    painter.setPen(toolkitColor(AlertContent::textColor));
    paintFittedText(painter, stack, Qt::AlignHCenter | Qt::AlignBottom, translated(content.text));
}

} // namespace tavro
