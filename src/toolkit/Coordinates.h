#pragma once

#include "platform/windows/Geometry.h"

#include <QRectF>

namespace tavro {

/// Between our coordinates, which go up from the lower left corner of the main screen, and the toolkit's,
/// which go down.
class Coordinates {
public:
    /// The main screen's place in the toolkit's coordinates, as exactly as the results shall be.
    explicit Coordinates(const QRectF& mainScreen)
        : m_origin(mainScreen.bottomLeft()) {}

    QPointF toToolkit(Point point) const;
    QRectF toToolkit(const Rect& rect) const;
    Point fromToolkit(QPointF point) const;
    Rect fromToolkit(const QRectF& rect) const;

private:
    const QPointF m_origin; // of ours in the toolkit's
};

} // namespace tavro
