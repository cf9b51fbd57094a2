#pragma once

#include "Child.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace bench {

struct Area {
    int x = 0, y = 0, width = 0, height = 0;
};

/// The colours of the whole root window, row by row; black where nothing is compared.
using Picture = std::vector<std::uint32_t>;

/// The desktop as its X server describes it, over a connection of the probe's own. It takes no part in what
/// is measured.
class Desktop {
public:
    /// What a user sees to be as it was: order, focus, minimised windows and pixels.
    struct State {
        std::vector<xcb_window_t> stacking;
        xcb_window_t active = XCB_NONE;
        std::vector<xcb_window_t> minimised;
        Picture picture;
        bool operator==(const State&) const = default;
    };

    Desktop();
    ~Desktop();

    State state();
    /// Whether all windows of that state but those of its active application are minimised, and beside these
    /// and the panel nothing but the wallpaper can be seen, on any screen.
    bool isPresentable(const State& before);

    /// Waits until the condition holds and neither a pixel nor a window's state has changed for a moment.
    /// Returns the last change after `since`, which is `since` itself if there was none.
    Clock::time_point settle(Clock::time_point since, const std::string& what,
                             const std::function<bool()>& condition);
    void settle();

    void movePointer(int x, int y);
    /// Presses and releases the button; returns the moment before.
    Clock::time_point click(std::uint8_t button);
    void pressEscape();
    /// Where the pointer disturbs nobody.
    void parkPointer();
    /// The panel's pixels, in a picture that is black elsewhere.
    Picture panels();
    /// A place on the item that came to the right end of the panel since.
    Area newestItem(const Picture& panelsBefore);

private:
    xcb_atom_t atom(const char* name) const;
    std::vector<std::uint32_t> values(xcb_window_t window, xcb_atom_t property) const;
    std::string className(xcb_window_t window) const;
    bool has(xcb_window_t window, xcb_atom_t property, xcb_atom_t value) const;
    bool isApplicationWindow(xcb_window_t window) const;
    Area frame(xcb_window_t window) const;
    std::vector<Area> panelAreas() const;
    std::vector<Area> screens() const;
    Picture capture(xcb_drawable_t drawable) const;
    void black(Picture& picture, const std::vector<Area>& areas) const;
    Picture onScreensOnly(const Picture& picture) const;
    void watchClients() const;
    bool isChange(const xcb_generic_event_t& event) const;

    xcb_connection_t* m_connection;
    xcb_screen_t* m_screen;
    std::uint8_t m_damageEvent = 0;
    xcb_atom_t m_stacking, m_active, m_windowState, m_hidden, m_skipTaskbar, m_type, m_typeDesktop,
        m_typeDock, m_wallpaper;
};

} // namespace bench
