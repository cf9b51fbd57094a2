#include "platform/linux/storage/QtImages.h"

#include "platform/linux/storage/PictureProcess.h"
#include "platform/process/Log.h"
#include "toolkit/Icons.h"
#include "toolkit/Pixels.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QImage>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace tavro {

namespace {
/// A photograph is encoded several times as fast as with the default, at little more than its size.
constexpr int pngQuality = 80;

/// In pixels; empty where there is no screen.
QSize largestScreen() {
    QSize largest(0, 0);
    for (const auto* screen : QGuiApplication::screens())
        largest = largest.expandedTo((QSizeF(screen->size()) * screen->devicePixelRatio()).toSize());
    return largest;
}

/// As they stand on the decoder's command line.
QStringList bounds(QSize atMost) {
    return atMost.isEmpty() ? QStringList()
                            : QStringList{QString::number(atMost.width()), QString::number(atMost.height())};
}

std::optional<std::string> encodedPng(const Image& image) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!toolkitImage(image).save(&buffer, "PNG", pngQuality))
        return std::nullopt;
    return buffer.data().toStdString();
}

} // namespace

QtImages::QtImages(std::filesystem::path decoder, Log& log)
    : m_decoder(std::move(decoder))
    , m_log(log) {}

// The version is that of before: what changes meanwhile is decoded again.
std::optional<Image> QtImages::contentsOf(const std::filesystem::path& file) const {
    const auto version = RecentPicture::versionOf(file, {});
    if (!version)
        return std::nullopt;
    if (auto known = m_recent.find(*version))
        return known;
    PictureProcess process;
    if (!process.decode(m_decoder, file, {}, {}))
        return std::nullopt;
    process.wait();
    return resultOf(process, *version);
}

void QtImages::load(const std::filesystem::path& file, Detail detail, ImageHandler handler) {
    if (detail == Detail::whole) {
        ++m_wholePictures;
        handler = [this, handler = std::move(handler)](const auto& image) {
            --m_wholePictures;
            handler(image);
        };
    }
    const auto version =
        RecentPicture::versionOf(file, detail == Detail::ofScreens ? largestScreen() : QSize());
    const auto known = version ? m_recent.find(*version) : std::nullopt;
    if (!version || known)
        return deliver(handler, known);
    const auto underWay = std::ranges::find(m_decodings, *version, &Decoding::version);
    if (underWay != m_decodings.end())
        underWay->handlers.push_back(std::move(handler));
    else
        startDecoding(file, *version, std::move(handler));
}

void QtImages::startDecoding(const std::filesystem::path& file, const RecentPicture::Version& version,
                             ImageHandler handler) {
    auto* process = new PictureProcess(&m_processes); // until one of the two ends below
    const auto decoding = m_decodings.insert(m_decodings.end(), {version, {std::move(handler)}});
    const bool isStarted =
        process->decode(m_decoder, file, bounds(version.atMost), [this, process, decoding] {
            process->deleteLater();
            const auto image = resultOf(*process, decoding->version);
            for (const auto& waiting : decoding->handlers)
                deliver(waiting, image);
            m_decodings.erase(decoding);
        });
    if (isStarted)
        return;
    delete process;
    deliver(decoding->handlers.front(), std::nullopt);
    m_decodings.erase(decoding);
}

std::optional<Image> QtImages::resultOf(const PictureProcess& process,
                                        const RecentPicture::Version& version) const {
    if (process.hasFailedToStart())
        m_log.diagnose(m_decoder.string() + " cannot be started");
    auto image = process.image();
    if (image) {
        tellConfinement(process);
        m_recent.keep(version, *image);
    }
    return image;
}

void QtImages::deliver(const ImageHandler& handler, const std::optional<Image>& image) {
    QMetaObject::invokeMethod(
        &m_processes, [handler, image] { handler(image); }, Qt::QueuedConnection);
}

void QtImages::tellConfinement(const PictureProcess& process) const {
    if (!process.isConfined() && !std::exchange(m_hasToldConfinement, true))
        m_log.diagnose("Pictures are decoded without a system call filter, which this kernel does not have");
}

void QtImages::pngRepresentation(const Image& image, DataHandler handler) {
    m_background.run([image] { return encodedPng(image); }, std::move(handler));
}

std::optional<NamedImage> QtImages::named(const std::string& name) const {
    NamedImage image{name};
    if (hasIcon(image))
        return image;
    m_log.diagnose("No image is named \"" + name + "\"");
    return std::nullopt;
}

} // namespace tavro
