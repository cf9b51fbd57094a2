#pragma once

#include "platform/storage/Image.h"

#include <QImage>
#include <QRect>
#include <xcb/render.h>

#include <cstdint>
#include <memory>

namespace tavro {

class XConnection;

/// Part of a picture that another program keeps on the X server, and may take away.
struct XServerImage final : ServerImage {
    XServerImage(xcb_drawable_t sourceDrawable, std::uint8_t sourceDepth, const QRect& sourcePart)
        : drawable(sourceDrawable)
        , depth(sourceDepth)
        , part(sourcePart) {}
    xcb_drawable_t drawable;
    std::uint8_t depth;
    QRect part;
};

/// A picture of ours on the X server, for windows to have as their background. The connection must outlive
/// it.
class XPixmap {
public:
    /// Sends the pixels, which must be of a 32-bit format.
    XPixmap(XConnection& x, const QImage& image);
    /// A copy that the server makes; where the other picture is smaller, it is repeated.
    XPixmap(XConnection& x, const XServerImage& image);
    /// A copy of the part from that corner on, as large as there is.
    XPixmap(XConnection& x, const XPixmap& other, const QRect& part, std::uint8_t depth);
    /// Asks the server what else the first picture would wait for.
    static void prepare(const XConnection& x);

    XPixmap(const XPixmap&) = delete;
    XPixmap& operator=(const XPixmap&) = delete;
    ~XPixmap();

    xcb_pixmap_t id() const { return m_id; }
    std::uint8_t depth() const { return m_depth; }

private:
    XPixmap(XConnection& x, const QSize& size, std::uint8_t depth);
    void copy(xcb_drawable_t source, std::uint8_t depth, const QPoint& corner, const QSize& size);

    XConnection& m_x;
    xcb_pixmap_t m_id;
    std::uint8_t m_depth;
};

} // namespace tavro
