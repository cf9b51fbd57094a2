#include "platform/linux/storage/QtImages.h"

#include "platform/linux/storage/JpegFile.h"
#include "platform/process/Log.h"
#include "toolkit/Icons.h"
#include "toolkit/Pixels.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QLoggingCategory>
#include <QProcess>

namespace tavro {

namespace {
/// Larger than any desktop's wallpaper; what a file announces beyond it is not decoded.
constexpr int longestSide = 16384;
constexpr int decodedMegabytes = 512;
/// A photograph is encoded several times as fast as with the default, at little more than its size.
constexpr int pngQuality = 80;
constexpr int conversionMilliseconds = 30000;

std::optional<Image> read(QImageReader& reader) {
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    reader.setAllocationLimit(decodedMegabytes);
    const auto size = reader.size();
    if (size.width() > longestSide || size.height() > longestSide)
        return std::nullopt;
    const auto image = reader.read();
    if (image.isNull())
        return std::nullopt;
    return imageOf(image);
}

/// Whether it begins as files of the HEIF family do (ISO base media files).
bool isHeif(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.peek(8).mid(4) == "ftyp";
}

} // namespace

QtImages::QtImages(std::filesystem::path heifProgram, Log& log)
    : m_heifProgram(std::move(heifProgram))
    , m_log(log) {
    // Whoever asked for the picture says that it is none.
    QLoggingCategory::setFilterRules("qt.gui.imageio*=false");
}

std::optional<Image> QtImages::contentsOf(const std::filesystem::path& file) const {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        return std::nullopt; // never wait on a pipe or a device
    return m_recent.contentsOf(file, [this](const auto& path) { return decoded(path); });
}

std::optional<Image> QtImages::decoded(const std::filesystem::path& file) const {
    if (isCutOffJpeg(file))
        return std::nullopt;
    const auto path = QString::fromStdString(file.string());
    if (isHeif(path)) {
        auto png = heifAsPng(file);
        QBuffer buffer(&png);
        QImageReader reader(&buffer);
        return read(reader);
    }
    QImageReader reader(path);
    return read(reader);
}

QByteArray QtImages::heifAsPng(const std::filesystem::path& file) const {
    constexpr qint64 mostBytes = qint64{decodedMegabytes} << 20;
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QString::fromStdString(m_heifProgram.string()),
                  {QString::fromStdString(file.string()), QString::number(longestSide)});
    QByteArray png;
    while (png.size() <= mostBytes && process.waitForReadyRead(conversionMilliseconds))
        png += process.readAllStandardOutput();
    png += process.readAllStandardOutput();
    if (process.error() == QProcess::FailedToStart)
        m_log.diagnose(m_heifProgram.string() + " cannot be started");
    constexpr int endMilliseconds = 1000;
    if (png.size() > mostBytes ||
        !(process.state() == QProcess::NotRunning || process.waitForFinished(endMilliseconds))) {
        process.kill();
        process.waitForFinished();
    }
    const bool isDone = process.exitStatus() == QProcess::NormalExit && process.exitCode() == EXIT_SUCCESS;
    return isDone && process.error() == QProcess::UnknownError ? png : QByteArray();
}

std::optional<std::string> QtImages::pngRepresentation(const Image& image) const {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!toolkitImage(image).save(&buffer, "PNG", pngQuality))
        return std::nullopt;
    return buffer.data().toStdString();
}

std::optional<NamedImage> QtImages::named(const std::string& name) const {
    NamedImage image{name};
    if (hasIcon(image))
        return image;
    m_log.diagnose("No image is named \"" + name + "\"");
    return std::nullopt;
}

} // namespace tavro
