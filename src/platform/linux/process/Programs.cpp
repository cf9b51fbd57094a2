#include "platform/linux/process/Programs.h"

#include <QProcess>
#include <QStandardPaths>

#include <csignal>
#include <linux/close_range.h>
#include <unistd.h>

namespace tavro {

namespace {
constexpr int longestStart = 2000; // milliseconds
}

// Nothing but system calls. What a signal does is inherited where it is ignored; an older kernel leaves the
// few files open that others have opened without O_CLOEXEC.
void becomeOrdinaryProgram() {
    for (int signal = 1; signal < NSIG; ++signal)
        ::signal(signal, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
}

// By setsid (util-linux), whose end is that of our child: the toolkit's own way for this asks nobody what to
// do in the child.
bool startDetached(const QString& program, const QStringList& arguments) {
    const auto path = QStandardPaths::findExecutable(program);
    if (path.isEmpty())
        return false;
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setChildProcessModifier(&becomeOrdinaryProgram);
    process.start("setsid", QStringList{"--fork", path} + arguments);
    return process.waitForFinished(longestStart) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

} // namespace tavro
