#pragma once

#include <xcb/xcb.h>

#include <map>
#include <utility>
#include <vector>

namespace tavro {

/// Which of our windows stand above the desktop icons and below everything else, and what it takes for them
/// to stay there. It knows no server: what the server reports goes in as calls, commands come out. How a
/// command is carried out, which may differ by window manager, is the concern of whoever takes it.
class Covers {
public:
    struct Command {
        enum class What {
            watchFrame, // whether it takes clicks
            passClicks, // of a frame
            raise,      // above the other desktop windows, and no others
        };
        What what;
        xcb_window_t window;
        bool operator==(const Command&) const = default;
    };

    struct StackedWindow {
        xcb_window_t id;
        bool isDesktop; // of the type DESKTOP
    };

    void add(xcb_window_t window, bool passesClicks);
    void remove(xcb_window_t window) { m_covers.erase(window); }
    bool contains(xcb_window_t window) const { return m_covers.contains(window); }
    bool isEmpty() const { return m_covers.empty(); }

    /// The window manager has put a window into a frame, or into another one.
    void framed(xcb_window_t window, xcb_window_t frame);
    /// Somebody has given a window a shape that takes clicks.
    void takesClicks(xcb_window_t frame);
    /// The managed windows, bottom to top.
    void restacked(const std::vector<StackedWindow>& stacking);

    /// What is to be sent since the last call, in this order.
    std::vector<Command> takeCommands() { return std::exchange(m_commands, {}); }

private:
    using What = Command::What;

    struct Cover {
        bool passesClicks = false;
        xcb_window_t frame = XCB_NONE;
        int raisesLeft = 0;
    };

    std::map<xcb_window_t, Cover> m_covers;
    std::vector<Command> m_commands;
};

} // namespace tavro
