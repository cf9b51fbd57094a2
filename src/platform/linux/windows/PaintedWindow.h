#pragma once

#include <QRect>
#include <QRegion>
#include <xcb/xcb.h>

#include <cstdint>
#include <vector>

namespace tavro {

class XConnection;
class XPixmap;

/// A window of ours that only shows something: its background, which the server paints by itself whenever
/// other windows uncover it. The connection must outlive it.
class PaintedWindow {
public:
    enum class Kind {
        managed,     // on the root window, by the window manager
        unmanaged,   // there, or in another program's window
        translucent, // the same, and what lies below shows through, where somebody blends the two
    };

    /// Not on screen yet. It has that number, which must be free.
    PaintedWindow(XConnection& x, xcb_window_t number, Kind kind, xcb_window_t parent, const QRect& place);
    PaintedWindow(const PaintedWindow&) = delete;
    PaintedWindow& operator=(const PaintedWindow&) = delete;
    virtual ~PaintedWindow();

    xcb_window_t number() const { return m_number; }
    /// Paints it; the picture may go afterwards. It must be as deep as the window.
    void setBackground(const XPixmap& picture);
    void setPlace(const QRect& place);
    /// Clicks go to what lies below the window, which may be a frame of ours.
    static void passClicks(const XConnection& x, xcb_window_t window);
    /// Only that part is there.
    void setShape(const QRegion& shape);
    /// Above its siblings.
    virtual void show() { show(XCB_STACK_MODE_ABOVE); }
    void setValues(xcb_atom_t property, xcb_atom_t type, const std::vector<std::uint32_t>& values);

protected:
    void show(xcb_stack_mode_t where);

private:
    XConnection& m_x;
    xcb_window_t m_number;
};

} // namespace tavro
