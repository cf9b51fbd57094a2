#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

#include <vector>

namespace tavro {

/// A screen and what the panels on it take of it, in the toolkit's coordinates.
struct ScreenWithPanels {
    QRect area;
    std::vector<QRect> panels;
};

/// What pixels of the root window take of a screen whose points are `scale` pixels, in the toolkit's
/// coordinates: screens begin where they do in pixels.
QRect partOfScreen(const QRect& rootPixels, const QRect& screen, double scale);

/// The strips along the edges of a screen that are not part of what is left for windows.
std::vector<QRect> stripsAround(const QRect& workArea, const QRect& screen);

/// The screen without the strip along its edge that the panel takes a part of.
QRect areaBeside(const QRect& panel, const QRect& screen);

/// Where something of this size opens that belongs to a point of a panel: beside the panel, on the side of
/// the screen's middle, its own middle at the point and all of it on the screen, smaller where the screen has
/// no room. At the point where there is no panel.
QRect besidePanel(const std::vector<ScreenWithPanels>& screens, QPoint point, QSize size);

/// Where the tray is: at the pointer if that is on a panel, since trays do not say; otherwise at the end of
/// a panel, where desktops put it, of the first screen's rather than another one's. Without a panel, the
/// corner of the first screen.
QPoint trayPlace(const std::vector<ScreenWithPanels>& screens, QPoint pointer);

} // namespace tavro
