#pragma once

#include <QPoint>
#include <QSize>

namespace tavro {

class XConnection;

/// Where something of this size opens that belongs to a point of a panel: beside the panel, on the side of
/// the screen's middle, its own middle at the point and all of it on the screen. At the point where there is
/// no panel. In the toolkit's coordinates.
QPoint besidePanel(const XConnection& x, QPoint point, QSize size);

} // namespace tavro
