#pragma once

#include "platform/linux/windows/Backdrop.h"
#include "platform/linux/windows/DesktopSnapshot.h"
#include "platform/linux/windows/XPixmap.h"
#include "platform/linux/x11/XConnection.h"

#include <array>
#include <map>
#include <memory>
#include <vector>

namespace tavro {

class Log;

/// Our windows above the desktop icons and below everything else.
///
/// A cover is a window inside the one that the icons are drawn in. So it stays above them, and below all
/// other windows, whatever the window manager does with that one: no window manager, compositing or not, has
/// a say in it, and nothing has to be raised again. Clicks go through it to the desktop. Where no desktop
/// window is (none of them has icons), it is a desktop window itself (EWMH, type DESKTOP), or the lowest of
/// all where the window manager knows nothing of those.
class XCovers {
public:
    /// The level of desktop icons.
    static constexpr int iconLevel = -2147483603;

    XCovers(XConnection& x, DesktopSnapshots& snapshots, Log& log);

    /// The place is in pixels of the root window, and the picture as large. The first window that a cover is
    /// made of has the cover's number.
    void show(xcb_window_t cover, const QRect& place, const Backdrop::Settings& settings,
              std::shared_ptr<const XPixmap> picture);
    /// Another one, of the same size.
    void setPicture(xcb_window_t cover, std::shared_ptr<const XPixmap> picture);
    void remove(xcb_window_t cover);

private:
    struct Pane {
        CoverPane pane;
        std::unique_ptr<PaintedWindow> window;
    };
    struct Cover {
        QRect place;
        Backdrop::Settings settings;
        std::shared_ptr<const XPixmap> picture;
        std::vector<Pane> panes;
        bool hasUsedNumber = false;
    };

    std::vector<DesktopWindow> readDesktopWindows() const;
    void follow(std::vector<DesktopWindow> desktopWindows);
    void desktopChanged();
    void placePanes(xcb_window_t number, Cover& cover);
    std::unique_ptr<PaintedWindow> makeWindow(xcb_window_t number, const CoverPane& pane,
                                              const Backdrop::Settings& settings) const;
    void paint(const Cover& cover, const Pane& pane) const;
    bool isOurs(xcb_window_t window) const;

    XConnection& m_x;
    DesktopSnapshots& m_snapshots;
    Log& m_log;
    std::map<xcb_window_t, Cover> m_covers;
    std::vector<DesktopWindow> m_desktopWindows;
    std::array<Observation, 2> m_events;
};

} // namespace tavro
