#include "toolkit/Pixels.h"

namespace tavro {

namespace {
constexpr auto format = QImage::Format_ARGB32_Premultiplied;
} // namespace

QImage toolkitImage(const Image& image) {
    using Pixels = std::shared_ptr<const std::uint8_t>;
    return QImage(
        image.pixels.get(), image.pixelWidth, image.pixelHeight, static_cast<qsizetype>(image.bytesPerRow),
        format, [](void* keeper) { delete static_cast<Pixels*>(keeper); }, new Pixels(image.pixels));
}

Image imageOf(const QImage& image) {
    const auto pixels = std::make_shared<const QImage>(image.convertToFormat(format));
    const Size size{pixels->width() / image.devicePixelRatio(), pixels->height() / image.devicePixelRatio()};
    return {pixels->width(), pixels->height(), static_cast<std::size_t>(pixels->bytesPerLine()),
            std::shared_ptr<const std::uint8_t>(pixels, pixels->constBits()), size};
}

} // namespace tavro
