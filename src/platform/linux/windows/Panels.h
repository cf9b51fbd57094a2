#pragma once

#include "platform/process/ObserverList.h"

#include <QPoint>
#include <QRect>
#include <QRegion>
#include <QSize>
#include <xcb/xcb.h>

#include <functional>

namespace tavro {

class XConnection;

/// Where something of this size opens that belongs to a point of a panel: beside the panel, on the side of
/// the screen's middle, its own middle at the point and all of it on the screen, smaller where the screen has
/// no room. At the point where there is no panel. In the toolkit's coordinates.
QRect besidePanel(const XConnection& x, QPoint point, QSize size);

/// Where the tray is: at the pointer if that is on a panel, since trays do not tell; otherwise at the end of
/// a panel, where desktops put it, of the main screen's rather than another one's. In the toolkit's
/// coordinates.
QPoint trayPlace(const XConnection& x);

/// Tells, once, that the panel at a point has left its edge of the screen for another place, or is gone.
class PanelWatch {
public:
    /// What is told may destroy this object. Nothing is where there is no panel.
    PanelWatch(XConnection& x, QPoint point, std::function<void()> left);
    ~PanelWatch();
    PanelWatch(const PanelWatch&) = delete;
    PanelWatch& operator=(const PanelWatch&) = delete;

private:
    void select(std::uint32_t mask);
    void panelMoved();
    void leave();

    XConnection& m_x;
    std::function<void()> m_left;
    xcb_window_t m_panel = XCB_NONE;
    QRegion m_edge; // of the screen, as thick as the panel
    Observation m_moves, m_end;
};

} // namespace tavro
