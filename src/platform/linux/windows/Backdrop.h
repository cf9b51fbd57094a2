#pragma once

#include "platform/linux/windows/PaintedWindow.h"
#include "platform/linux/x11/XConnection.h"

#include <array>

namespace tavro {

/// A painted window on the root window, below all others. Window managers that know the type DESKTOP (EWMH)
/// keep it there, with its exact rectangle and out of "show desktop"; from the others it stays free, and is
/// lowered again when they restack.
class Backdrop final : public PaintedWindow {
public:
    struct Settings {
        bool passesClicks = false;
        bool onAllWorkspaces = false;
        bool skipsSwitchers = false;
    };

    Backdrop(XConnection& x, xcb_window_t number, const QRect& place, const Settings& settings);

    bool isManaged() const { return m_isManaged; }
    void show() override;

private:
    Backdrop(XConnection& x, xcb_window_t number, const QRect& place, const Settings& settings,
             bool isManaged);
    void describe(const QRect& place, const Settings& settings);
    void emptyFrame();

    XConnection& m_x;
    const bool m_isManaged;
    xcb_window_t m_frame = XCB_NONE;
    std::array<Observation, 2> m_events;
};

} // namespace tavro
