#include "picture/Decoders.h"

#include "picture/HeicFile.h"
#include "picture/JpegFile.h"
#include "picture/PictureHeader.h"
#include "picture/SvgFile.h"

#include <QBuffer>
#include <QImageReader>
#include <QLoggingCategory>
#include <QThreadPool>

namespace tavro {

namespace {

constexpr auto jpeg = "jpeg", png = "png", webp = "webp";

/// The toolkit's name for the format; none for one that is not for the toolkit.
const char* formatOf(std::string_view file) {
    if (file.starts_with("\x89PNG\r\n\x1a\n"))
        return png;
    if (file.starts_with("\xff\xd8\xff"))
        return jpeg;
    if (file.starts_with("RIFF") && file.substr(0, 12).ends_with("WEBP"))
        return webp;
    return nullptr;
}

/// Of all the toolkit's decoders, which more packages may add to, takes no other than that one.
void readAs(const char* format, QImageReader& reader) {
    reader.setAutoDetectImageFormat(false);
    reader.setFormat(format);
}

bool isTooLarge(QSize size) {
    constexpr int longestSide = PictureHeader::longestSide;
    return size.width() > longestSide || size.height() > longestSide;
}

QImage decodeAs(const char* format, std::string_view file, const WantedSize& wanted) {
    if (format == jpeg && isCutOffJpeg(file))
        return {};
    auto bytes = QByteArray::fromRawData(file.data(), static_cast<qsizetype>(file.size()));
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    readAs(format, reader);
    reader.setAutoTransform(true);
    QImageReader::setAllocationLimit(PictureHeader::mostBytes >> 20);
    const auto size = reader.size();
    const bool isTurned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    const auto other = size.isEmpty() || isTurned ? size : wanted(size, false);
    if (isTooLarge(size) || isTooLarge(other))
        return {};
    if (other != size)
        reader.setScaledSize(other);
    return reader.read();
}

} // namespace

void loadDecoders() {
    constexpr int mostThreads = 4;
    QThreadPool::globalInstance()->setMaxThreadCount(mostThreads);
    QLoggingCategory::setFilterRules(
        "qt.gui.imageio*=false"); // whoever asked for a picture says that there is none
    for (const auto* format : {jpeg, png, webp}) {
        QBuffer nothing;
        QImageReader reader(&nothing);
        readAs(format, reader);
        (void)reader.canRead();
    }
    loadHeicDecoders();
    loadSvgDecoder();
}

QImage decode(std::string_view file, const WantedSize& wanted) {
    constexpr int longestSide = PictureHeader::longestSide;
    if (const auto* format = formatOf(file))
        return decodeAs(format, file, wanted);
    if (isSvg(file))
        return drawSvg(
            file, [&](QSize own) { return wanted(own, true); }, longestSide);
    return isHeic(file) ? decodeHeic(file, longestSide) : QImage();
}

} // namespace tavro
