#include "platform/linux/x11/Concealment.h"

#include "platform/linux/x11/XConnection.h"

#include <xcb/shape.h>

namespace tavro {

// Where nobody composites, a shape without any pixel does it; compositing managers look at the opacity, of
// which this is the lowest.
void conceal(XConnection& x, xcb_window_t window, xcb_window_t frame) {
    const std::uint32_t transparent = 0;
    xcb_change_property(x.raw(), XCB_PROP_MODE_REPLACE, window, x.atoms().netWmWindowOpacity,
                        XCB_ATOM_CARDINAL, 32, 1, &transparent);
    xcb_shape_rectangles(x.raw(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, XCB_CLIP_ORDERING_UNSORTED, frame,
                         0, 0, 0, nullptr);
}

void reveal(XConnection& x, xcb_window_t window, xcb_window_t frame) {
    xcb_delete_property(x.raw(), window, x.atoms().netWmWindowOpacity);
    xcb_shape_mask(x.raw(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, frame, 0, 0, XCB_NONE);
}

} // namespace tavro
