#pragma once

#include "Child.h"

#include "support/desktop/Input.h"
#include "support/desktop/XClient.h"

#include <functional>

namespace bench {

/// The desktop as its X server describes it, over a connection of the probe's own. It takes no part in what
/// is measured.
class Desktop {
public:
    /// What a user sees to be as it was: order, focus, minimised windows and pixels.
    struct State {
        std::vector<xcb_window_t> stacking;
        xcb_window_t active = XCB_NONE;
        std::vector<xcb_window_t> minimised;
        Pixels picture; // black where nothing is compared
        bool operator==(const State&) const = default;
    };

    Desktop();

    State state();
    /// Whether all windows of that state but those of its active application are minimised, and beside these
    /// and the panel nothing but the wallpaper can be seen, on any screen.
    bool isPresentable(const State& before);

    /// Where, on each screen, a presentation shows what may be seen: the panel, and the windows of that
    /// state's active application.
    std::vector<Rect> publicAreas(const State& before) const;

    /// The last change after some moment, which is that moment where there was none.
    struct Change {
        Clock::time_point any;
        Clock::time_point outside; // a pixel's, outside the areas
    };
    /// Waits until the condition holds and neither a pixel nor a window's state has changed for a moment.
    Change settle(Clock::time_point since, const std::string& what, const std::function<bool()>& condition,
                  const std::vector<Rect>& areas);
    Clock::time_point settle(Clock::time_point since, const std::string& what,
                             const std::function<bool()>& condition);
    void settle();

    void movePointer(Point place);
    /// Clicks with the middle button, and parks the pointer; returns the moment before.
    Clock::time_point click(Point place);
    void pressEscape();
    /// Where the pointer disturbs nobody.
    void parkPointer();
    /// The panel's pixels, in a picture that is black elsewhere.
    Pixels panels();
    /// A place on the item that came to the right end of the panel since.
    Point newestItem(const Pixels& panelsBefore);

private:
    Point quietPlace() const;
    bool isApplicationWindow(xcb_window_t window) const;
    std::vector<Rect> panelAreas() const;
    Rect all() const;
    void black(Pixels& picture, const std::vector<Rect>& areas) const;
    /// The picture, black outside these areas.
    Pixels only(const Pixels& picture, const std::vector<Rect>& areas) const;
    void watchClients() const;
    void note(const xcb_generic_event_t& event, const std::vector<Rect>& areas, Change& change) const;

    XClient m_server;
    Input m_input{m_server};
    std::uint8_t m_damageEvent = 0;
};

} // namespace bench
