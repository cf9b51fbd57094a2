#include "platform/linux/QtImages.h"

#include "platform/Log.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QImageReader>

namespace tavro {

namespace {
/// Larger than any desktop's wallpaper; what a file announces beyond it is not decoded.
constexpr int longestSide = 16384;
constexpr int decodedMegabytes = 512;
} // namespace

std::optional<Image> QtImages::contentsOf(const std::filesystem::path& file) const {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        return std::nullopt; // never wait on a pipe or a device
    QImageReader reader(QString::fromStdString(file.string()));
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    reader.setAllocationLimit(decodedMegabytes);
    const auto size = reader.size();
    if (size.width() > longestSide || size.height() > longestSide)
        return std::nullopt;
    const auto image = reader.read();
    if (image.isNull())
        return std::nullopt;
    return fromToolkit(image);
}

std::optional<std::string> QtImages::pngRepresentation(const Image& image) const {
    const QImage source(image.pixels.get(), image.pixelWidth, image.pixelHeight,
                        static_cast<qsizetype>(image.bytesPerRow), QImage::Format_ARGB32_Premultiplied);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!source.save(&buffer, "PNG"))
        return std::nullopt;
    return buffer.data().toStdString();
}

std::optional<NamedImage> QtImages::named(const std::string& name) const {
    NamedImage image{name};
    if (QFile::exists(QString::fromStdString(resourcePath(image))))
        return image;
    m_log.diagnose("No image is named \"" + name + "\"");
    return std::nullopt;
}

std::string QtImages::resourcePath(const NamedImage& image) {
    return ":/icons/" + image.name + ".svg";
}

Image QtImages::fromToolkit(const QImage& source) {
    auto image = std::make_shared<QImage>(source.convertToFormat(QImage::Format_ARGB32_Premultiplied));
    const Size size{image->width() / source.devicePixelRatio(), image->height() / source.devicePixelRatio()};
    return {image->width(), image->height(), static_cast<std::size_t>(image->bytesPerLine()),
            std::shared_ptr<const std::uint8_t>(image, image->constBits()), size};
}

} // namespace tavro
