#pragma once

#include "platform/linux/windows/Covers.h"
#include "platform/linux/x11/XConnection.h"

#include <QRect>
#include <xcb/shape.h>

#include <array>
#include <vector>

namespace tavro {

/// Our windows above the desktop icons and below everything else.
///
/// EWMH's type DESKTOP with the state BELOW is what window managers put above other desktop windows and keep
/// at its exact rectangle, on every workspace, and out of "show desktop". Where another desktop window rises
/// above one of ours (a restarted icon desktop), ours is raised again. What is to be done, and when, is
/// decided by the model; how, here.
class DesktopLayer {
public:
    /// The level of desktop icons.
    static constexpr int iconLevel = -2147483603;

    explicit DesktopLayer(XConnection& x);

    /// Before the window is shown.
    void add(xcb_window_t window, bool onAllWorkspaces, bool skipsSwitchers, bool passesClicks);
    /// After it. Keeps the window at these pixels of the root window, unless there are none.
    void shown(xcb_window_t window, const QRect& pixels) const;
    void remove(xcb_window_t window);

private:
    void setState(xcb_window_t window, bool onAllWorkspaces, bool skipsSwitchers);
    void shapeChanged(const xcb_shape_notify_event_t& event);
    void reparented(xcb_window_t window);
    void restacked();
    xcb_window_t frameOf(xcb_window_t window) const;
    std::vector<Covers::StackedWindow> readStacking() const;
    void send();

    XConnection& m_x;
    Covers m_covers;
    std::array<Observation, 3> m_events;
};

} // namespace tavro
