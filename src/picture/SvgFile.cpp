#include "picture/SvgFile.h"

#include "picture/Release.h"

#include <fontconfig/fontconfig.h>
#include <librsvg/rsvg.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace tavro {

namespace {

using Handle = std::unique_ptr<RsvgHandle, Release<&g_object_unref>>;
using Surface = std::unique_ptr<cairo_surface_t, Release<&cairo_surface_destroy>>;
using Context = std::unique_ptr<cairo_t, Release<&cairo_destroy>>;

/// Its own size, or else that of what it shows; 0 where it has none.
QSizeF sizeOf(RsvgHandle* handle) {
    double width = 0, height = 0;
    if (rsvg_handle_get_intrinsic_size_in_pixels(handle, &width, &height))
        return {width, height};
    gboolean hasWidth = false, hasHeight = false, hasViewBox = false;
    RsvgLength widthInUnits, heightInUnits;
    RsvgRectangle viewBox{};
    rsvg_handle_get_intrinsic_dimensions(handle, &hasWidth, &widthInUnits, &hasHeight, &heightInUnits,
                                         &hasViewBox, &viewBox);
    return hasViewBox ? QSizeF(viewBox.width, viewBox.height) : QSizeF();
}

} // namespace

// Without fonts, which could not be read later: nobody looks for them, and complains.
void loadSvgDecoder() {
    FcConfigSetCurrent(FcConfigCreate());
}

bool isSvg(std::string_view bytes) {
    constexpr std::size_t headOfAFile = 4096;
    const auto head = bytes.substr(0, headOfAFile);
    const auto start = head.find_first_not_of("\xef\xbb\xbf \t\r\n");
    return start != head.npos && head[start] == '<' && head.find("<svg", start) != head.npos;
}

// Of a handle without a base, the library opens no file and reaches no network; this process could not
// either.
QImage drawSvg(std::string_view bytes, const std::function<QSize(QSize)>& sizeByOwn, int longestSide) {
    const Handle handle(
        rsvg_handle_new_from_data(reinterpret_cast<const guint8*>(bytes.data()), bytes.size(), nullptr));
    const auto own = handle ? sizeOf(handle.get()) : QSizeF();
    if (!(own.width() > 0 && own.width() <= longestSide && own.height() > 0 && own.height() <= longestSide))
        return {};
    const auto size = sizeByOwn(QSizeF(std::ceil(own.width()), std::ceil(own.height())).toSize());
    if (size.isEmpty() || size.width() > longestSide || size.height() > longestSide)
        return {};
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return {};
    image.fill(Qt::transparent);
    const Surface surface(cairo_image_surface_create_for_data(image.bits(), CAIRO_FORMAT_ARGB32,
                                                              image.width(), image.height(),
                                                              static_cast<int>(image.bytesPerLine())));
    const Context context(cairo_create(surface.get()));
    cairo_scale(context.get(), size.width() / own.width(), size.height() / own.height());
    const RsvgRectangle place{0, 0, own.width(), own.height()};
    const bool isDrawn = rsvg_handle_render_document(handle.get(), context.get(), &place, nullptr);
    return isDrawn ? image : QImage();
}

} // namespace tavro
