#include "platform/linux/storage/PictureProcess.h"

#include "platform/linux/process/Programs.h"

#include <QTimer>

#include <chrono>
#include <unistd.h>
#include <utility>

namespace tavro {

namespace {
constexpr std::chrono::milliseconds longestRun = std::chrono::seconds(30);
}

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

void PictureProcess::decode(const std::filesystem::path& program, int file, QSize atMost,
                            std::function<void()> whenDone) {
    m_whenDone = std::move(whenDone);
    QStringList bounds;
    if (!atMost.isEmpty())
        bounds << QString::number(atMost.width()) << QString::number(atMost.height());
    setChildProcessModifier([file] {
        ::dup2(file, STDIN_FILENO);
        becomeOrdinaryProgram();
    });
    QTimer::singleShot(longestRun, this, [this] { kill(); });
    start(QString::fromStdString(program.string()), bounds);
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
