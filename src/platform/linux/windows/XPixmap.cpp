#include "platform/linux/windows/XPixmap.h"

#include "platform/linux/x11/XConnection.h"

#include <xcb/xcb_renderutil.h>

#include <algorithm>

namespace tavro {

namespace {

constexpr std::uint8_t opaqueDepth = 24, translucentDepth = 32;

std::uint16_t size16(int length) {
    return static_cast<std::uint16_t>(std::clamp(length, 1, 0x7FFF));
}

/// How the server is to read the pixels of a drawable.
xcb_render_pictformat_t formatOf(const XConnection& x, std::uint8_t depth) {
    const auto* formats = xcb_render_util_query_formats(x.raw()); // asked once, and kept with the connection
    const auto standard = depth == translucentDepth ? XCB_PICT_STANDARD_ARGB_32 : XCB_PICT_STANDARD_RGB_24;
    if (depth == translucentDepth || depth == opaqueDepth)
        return xcb_render_util_find_standard_format(formats, standard)->id;
    return xcb_render_util_find_visual_format(formats, x.screen()->root_visual)->format;
}

} // namespace

XPixmap::XPixmap(XConnection& x, const QSize& size, std::uint8_t depth)
    : m_x(x)
    , m_id(xcb_generate_id(x.raw()))
    , m_depth(depth) {
    xcb_create_pixmap(x.raw(), depth, m_id, x.root(), size16(size.width()), size16(size.height()));
}

// A request is of limited length.
XPixmap::XPixmap(XConnection& x, const QImage& image)
    : XPixmap(x, image.size(), image.hasAlphaChannel() ? translucentDepth : opaqueDepth) {
    const auto context = xcb_generate_id(x.raw());
    xcb_create_gc(x.raw(), context, m_id, 0, nullptr);
    const auto most =
        xcb_get_maximum_request_length(x.raw()) * sizeof(std::uint32_t) - sizeof(xcb_put_image_request_t);
    const auto bytesOfRow = std::max<std::size_t>(1, static_cast<std::size_t>(image.bytesPerLine()));
    const int rowsAtOnce = std::max(1, static_cast<int>(most / 2 / bytesOfRow));
    for (int row = 0; row < image.height(); row += rowsAtOnce) {
        const int rows = std::min(rowsAtOnce, image.height() - row);
        xcb_put_image(x.raw(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_id, context, size16(image.width()), size16(rows),
                      0, static_cast<std::int16_t>(row), 0, m_depth,
                      static_cast<std::uint32_t>(rows * image.bytesPerLine()), image.constScanLine(row));
    }
    xcb_free_gc(x.raw(), context);
}

XPixmap::XPixmap(XConnection& x, const XServerImage& image)
    : XPixmap(x, image.part.size(), opaqueDepth) {
    copy(image.drawable, image.depth, image.part.topLeft(), image.part.size());
}

XPixmap::XPixmap(XConnection& x, const XPixmap& other, const QRect& part, std::uint8_t depth)
    : XPixmap(x, part.size(), depth) {
    copy(other.id(), other.depth(), part.topLeft(), part.size());
}

void XPixmap::prepare(const XConnection& x) {
    xcb_render_util_query_formats(x.raw());
}

XPixmap::~XPixmap() {
    xcb_free_pixmap(m_x.raw(), m_id);
}

// The depths may differ, which a plain copy refuses: some desktops keep their wallpaper with an alpha
// channel.
void XPixmap::copy(xcb_drawable_t source, std::uint8_t depth, const QPoint& corner, const QSize& size) {
    const auto from = xcb_generate_id(m_x.raw()), to = xcb_generate_id(m_x.raw());
    const std::uint32_t repeat = XCB_RENDER_REPEAT_NORMAL;
    xcb_render_create_picture(m_x.raw(), from, source, formatOf(m_x, depth), XCB_RENDER_CP_REPEAT, &repeat);
    xcb_render_create_picture(m_x.raw(), to, m_id, formatOf(m_x, m_depth), 0, nullptr);
    xcb_render_composite(m_x.raw(), XCB_RENDER_PICT_OP_SRC, from, XCB_NONE, to,
                         static_cast<std::int16_t>(corner.x()), static_cast<std::int16_t>(corner.y()), 0, 0,
                         0, 0, size16(size.width()), size16(size.height()));
    xcb_render_free_picture(m_x.raw(), from);
    xcb_render_free_picture(m_x.raw(), to);
}

} // namespace tavro
