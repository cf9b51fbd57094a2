#include "platform/linux/storage/PictureProcess.h"

#include "platform/linux/process/Programs.h"

#include <QFile>
#include <QTimer>

#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tavro {

namespace {

constexpr std::chrono::milliseconds longestRun = std::chrono::seconds(30);

/// Opens what is a file; never waits on a pipe or a device.
bool openFile(const std::filesystem::path& path, QFile& file) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0 || !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return false;
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

PictureProcess::PictureProcess(QObject* parent)
    : QProcess(parent) {
    setProcessChannelMode(ForwardedErrorChannel);
    connect(this, &QProcess::readyReadStandardOutput, this, [this] { read(); });
    connect(this, &QProcess::finished, this, [this] { end(); });
    connect(this, &QProcess::errorOccurred, this, [this](ProcessError error) {
        if (error == FailedToStart) // else it has not finished either
            end();
    });
}

PictureProcess::~PictureProcess() {
    disconnect();
    kill();
    waitForFinished();
}

bool PictureProcess::decode(const std::filesystem::path& program, const std::filesystem::path& path,
                            const QStringList& arguments, std::function<void()> whenDone) {
    QFile file;
    if (!path.empty() && !openFile(path, file))
        return false;
    if (path.empty())
        setStandardInputFile(nullDevice());
    m_whenDone = std::move(whenDone);
    setChildProcessModifier([descriptor = file.handle()] {
        // The file itself and not its name: the program may open nothing.
        if (descriptor >= 0)
            ::dup2(descriptor, STDIN_FILENO);
        becomeOrdinaryProgram();
    });
    QTimer::singleShot(longestRun, this, [this] { kill(); });
    start(QString::fromStdString(program.string()), arguments);
    return true;
}

void PictureProcess::wait() {
    if (waitForFinished(static_cast<int>(longestRun.count())))
        return;
    kill();
    waitForFinished();
}

std::optional<Image> PictureProcess::image() const {
    const bool isDone = !m_isTooMuch && exitStatus() == NormalExit && exitCode() == EXIT_SUCCESS;
    return isDone ? m_answer.image() : std::nullopt;
}

void PictureProcess::read() {
    if (m_isTooMuch || m_answer.append(readAllStandardOutput()))
        return;
    m_isTooMuch = true;
    kill();
}

void PictureProcess::end() {
    read();
    if (const auto whenDone = std::exchange(m_whenDone, nullptr))
        whenDone();
}

} // namespace tavro
