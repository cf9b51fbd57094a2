#include "platform/linux/storage/QtImages.h"

#include "platform/linux/storage/PictureAnswer.h"
#include "platform/process/Log.h"
#include "toolkit/Icons.h"
#include "toolkit/Pixels.h"

#include <QBuffer>
#include <QDeadlineTimer>
#include <QFile>
#include <QImage>
#include <QProcess>

#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tavro {

namespace {
/// A photograph is encoded several times as fast as with the default, at little more than its size.
constexpr int pngQuality = 80;

/// Opens what is a file; never waits on a pipe or a device.
bool openFile(const std::filesystem::path& path, QFile& file) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0 || !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return false;
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

/// Reads until the process has closed its output. False when what it writes, or how long it takes, is too
/// much.
bool read(QProcess& process, PictureAnswer& answer) {
    const QDeadlineTimer deadline(std::chrono::seconds(30));
    const auto timeLeft = [&] { return static_cast<int>(deadline.remainingTime()); };
    while (process.waitForReadyRead(timeLeft()))
        if (!answer.append(process.readAllStandardOutput()))
            return false;
    return answer.append(process.readAllStandardOutput()) &&
           (process.state() == QProcess::NotRunning || process.waitForFinished(timeLeft()));
}

} // namespace

QtImages::QtImages(std::filesystem::path decoder, Log& log)
    : m_decoder(std::move(decoder))
    , m_log(log) {}

std::optional<Image> QtImages::contentsOf(const std::filesystem::path& file) const {
    return m_recent.contentsOf(file, [this](const auto& path) { return decoded(path); });
}

std::optional<Image> QtImages::decoded(const std::filesystem::path& path) const {
    QFile file;
    if (!openFile(path, file))
        return std::nullopt;
    QProcess process;
    process.setChildProcessModifier([input = file.handle()] { ::dup2(input, STDIN_FILENO); });
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QString::fromStdString(m_decoder.string()), QStringList());
    PictureAnswer answer;
    const bool isWhole = read(process, answer);
    if (process.error() == QProcess::FailedToStart)
        m_log.diagnose(m_decoder.string() + " cannot be started");
    if (!isWhole) {
        process.kill();
        process.waitForFinished();
    }
    if (!isWhole || process.exitStatus() != QProcess::NormalExit || process.exitCode() != EXIT_SUCCESS)
        return std::nullopt;
    auto image = answer.image();
    if (image)
        tellConfinement(answer);
    return image;
}

void QtImages::tellConfinement(const PictureAnswer& answer) const {
    if (!answer.isConfined() && !std::exchange(m_hasToldConfinement, true))
        m_log.diagnose("Pictures are decoded without a system call filter, which this kernel does not have");
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
