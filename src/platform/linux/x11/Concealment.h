#pragma once

#include <xcb/xcb.h>

namespace tavro {

class XConnection;

/// For window managers that do not minimise a window, and for windows that they do not manage.
///
/// Leaves nothing of another program's window, and of its frame, to be seen or to be clicked. It stays where
/// it is, and knows nothing of it. The frame is the window itself where it has none.
void conceal(XConnection& x, xcb_window_t window, xcb_window_t frame);
/// Of one that is not concealed, too; without the opacity or the shape that somebody else has given it.
void reveal(XConnection& x, xcb_window_t window, xcb_window_t frame);

} // namespace tavro
