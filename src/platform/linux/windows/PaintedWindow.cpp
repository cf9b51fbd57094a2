#include "platform/linux/windows/PaintedWindow.h"

#include "platform/linux/windows/XPixmap.h"
#include "platform/linux/x11/XConnection.h"

#include <xcb/shape.h>
#include <xcb/xcb_renderutil.h>

#include <unistd.h>
#include <vector>

namespace tavro {

namespace {

/// The visual with an alpha channel; none where the server has none.
xcb_visualid_t translucentVisual(const XConnection& x) {
    constexpr std::uint8_t depth = 32;
    for (auto depths = xcb_screen_allowed_depths_iterator(x.screen()); depths.rem; xcb_depth_next(&depths))
        if (depths.data->depth == depth && depths.data->visuals_len > 0)
            return xcb_depth_visuals(depths.data)->visual_id;
    return XCB_NONE;
}

void setShapeOf(const XConnection& x, xcb_window_t window, xcb_shape_kind_t kind, const QRegion& region) {
    std::vector<xcb_rectangle_t> rectangles;
    for (const auto& part : region)
        rectangles.push_back({static_cast<std::int16_t>(part.x()), static_cast<std::int16_t>(part.y()),
                              static_cast<std::uint16_t>(part.width()),
                              static_cast<std::uint16_t>(part.height())});
    xcb_shape_rectangles(x.raw(), XCB_SHAPE_SO_SET, static_cast<xcb_shape_kind_t>(kind),
                         XCB_CLIP_ORDERING_UNSORTED, window, 0, 0,
                         static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
}

} // namespace

PaintedWindow::PaintedWindow(XConnection& x, xcb_window_t number, Kind kind, xcb_window_t parent,
                             const QRect& place)
    : m_x(x)
    , m_number(number) {
    // A border pixel and a colour map, or the server refuses a depth that is not the parent's.
    xcb_create_window_value_list_t values{};
    std::uint32_t mask = XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT;
    values.override_redirect = kind == Kind::unmanaged || kind == Kind::translucent;
    std::uint8_t depth = XCB_COPY_FROM_PARENT;
    xcb_visualid_t visual = XCB_COPY_FROM_PARENT;
    if (kind == Kind::translucent) {
        depth = 32;
        visual = translucentVisual(x);
        values.colormap = xcb_generate_id(x.raw());
        xcb_create_colormap(x.raw(), XCB_COLORMAP_ALLOC_NONE, values.colormap, x.root(), visual);
        mask |= XCB_CW_COLORMAP;
    }
    xcb_create_window_aux(x.raw(), depth, number, parent, static_cast<std::int16_t>(place.x()),
                          static_cast<std::int16_t>(place.y()), static_cast<std::uint16_t>(place.width()),
                          static_cast<std::uint16_t>(place.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          visual, mask, &values);
    if (values.colormap != XCB_NONE)
        xcb_free_colormap(x.raw(), values.colormap); // the window keeps it
    setValues(x.atoms().netWmPid, XCB_ATOM_CARDINAL, {static_cast<std::uint32_t>(::getpid())});
    constexpr char instanceAndClass[] = "tavropro\0tavropro"; // ICCCM, WM_CLASS
    xcb_change_property(x.raw(), XCB_PROP_MODE_REPLACE, number, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        sizeof instanceAndClass, instanceAndClass);
}

PaintedWindow::~PaintedWindow() {
    xcb_destroy_window(m_x.raw(), m_number);
}

void PaintedWindow::setBackground(const XPixmap& picture) {
    const std::uint32_t pixmap = picture.id();
    xcb_change_window_attributes(m_x.raw(), m_number, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(m_x.raw(), false, m_number, 0, 0, 0, 0);
}

void PaintedWindow::setPlace(const QRect& place) {
    const int values[] = {place.x(), place.y(), place.width(), place.height()};
    xcb_configure_window(m_x.raw(), m_number,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values);
}

void PaintedWindow::passClicks(const XConnection& x, xcb_window_t window) {
    setShapeOf(x, window, XCB_SHAPE_SK_INPUT, {});
}

void PaintedWindow::setShape(const QRegion& shape) {
    setShapeOf(m_x, m_number, XCB_SHAPE_SK_BOUNDING, shape);
}

void PaintedWindow::show(xcb_stack_mode_t where) {
    const std::uint32_t mode = where;
    xcb_configure_window(m_x.raw(), m_number, XCB_CONFIG_WINDOW_STACK_MODE, &mode);
    xcb_map_window(m_x.raw(), m_number);
}

void PaintedWindow::setValues(xcb_atom_t property, xcb_atom_t type,
                              const std::vector<std::uint32_t>& values) {
    xcb_change_property(m_x.raw(), XCB_PROP_MODE_REPLACE, m_number, property, type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
}

} // namespace tavro
