#pragma once

#include <QPoint>
#include <QSize>

namespace tavro {

class XConnection;

/// Where something of this size opens that belongs to a point of a panel: beside the panel, on the side of
/// the screen's middle, its own middle at the point and all of it on the screen. At the point where there is
/// no panel. In the toolkit's coordinates.
QPoint besidePanel(const XConnection& x, QPoint point, QSize size);

/// Where the tray is: at the pointer if that is on a panel, since trays do not tell; otherwise at the end of
/// the main screen's panel, where desktops put it. In the toolkit's coordinates.
QPoint trayPlace(const XConnection& x);

} // namespace tavro
