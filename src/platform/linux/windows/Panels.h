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

/// Where something that belongs to a point of a panel opens, among the screens and panels that there are now.
QRect besidePanel(const XConnection& x, QPoint point, QSize size);

/// Where the tray is now.
QPoint trayPlace(const XConnection& x);

/// Tells, once, that the panel at a point has left its edge of the screen for another place, or is gone; on a
/// screen without panels, that one has come.
class PanelWatch {
public:
    /// What is reported may destroy this object.
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
    Observation m_moves, m_end, m_arrival;
};

} // namespace tavro
