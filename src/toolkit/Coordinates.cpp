#include "toolkit/Coordinates.h"

namespace tavro {

QPointF Coordinates::toToolkit(Point point) const {
    return {m_origin.x() + point.x, m_origin.y() - point.y};
}

QRectF Coordinates::toToolkit(const Rect& rect) const {
    const auto [width, height] = rect.size;
    return {toToolkit(Point{rect.origin.x, rect.origin.y + height}), QSizeF(width, height)};
}

Point Coordinates::fromToolkit(QPointF point) const {
    return {point.x() - m_origin.x(), m_origin.y() - point.y()};
}

Rect Coordinates::fromToolkit(const QRectF& rect) const {
    return {fromToolkit(rect.bottomLeft()), {rect.width(), rect.height()}};
}

} // namespace tavro
