#include "picture/GdkPixbufScaler.h"

#include "picture/Release.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <memory>

namespace tavro {

namespace {

using Pixbuf = std::unique_ptr<GdkPixbuf, Release<&g_object_unref>>;

constexpr int bitsPerSample = 8;

/// Shares the pixels, of three bytes each or of four.
Pixbuf pixbufOf(QImage& image) {
    const bool hasAlpha = image.hasAlphaChannel();
    return Pixbuf(gdk_pixbuf_new_from_data(image.bits(), GDK_COLORSPACE_RGB, hasAlpha, bitsPerSample,
                                           image.width(), image.height(),
                                           static_cast<int>(image.bytesPerLine()), nullptr, nullptr));
}

} // namespace

QImage scaledByGdkPixbuf(const QImage& picture, QSize size, const QRect& part) {
    const auto format = picture.hasAlphaChannel() ? QImage::Format_RGBA8888 : QImage::Format_RGB888;
    auto source = picture.convertToFormat(format);
    QImage result(part.size(), format);
    if (source.isNull() || result.isNull())
        return {};
    const auto from = pixbufOf(source), to = pixbufOf(result);
    gdk_pixbuf_scale(from.get(), to.get(), 0, 0, part.width(), part.height(), -part.x(), -part.y(),
                     static_cast<double>(size.width()) / source.width(),
                     static_cast<double>(size.height()) / source.height(), GDK_INTERP_BILINEAR);
    return result;
}

} // namespace tavro
