#pragma once

#include "platform/linux/x11/XConnection.h"

#include <array>
#include <set>

namespace tavro {

/// The windows in which notification servers show their notifications (EWMH, type NOTIFICATION), out of sight
/// for a while: for servers that cannot be asked to hold them back.
class XBubbles {
public:
    explicit XBubbles(XConnection& x);

    /// Those that are there, and those that come; or all of them can be seen again, also what a process
    /// before has left concealed.
    void keepAway(bool areAway);

private:
    bool isBubble(xcb_window_t window) const;
    std::vector<xcb_window_t> bubbles() const;

    XConnection& m_x;
    bool m_areAway = false;
    std::set<xcb_window_t> m_new; // whose type may still be set
    std::array<Observation, 3> m_events;
};

} // namespace tavro
