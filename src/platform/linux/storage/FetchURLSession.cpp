#include "platform/linux/storage/FetchURLSession.h"

#include "platform/linux/process/Programs.h"
#include "platform/process/Log.h"

#include <QProcess>

namespace tavro {

namespace {

std::optional<std::string> documentFrom(QProcess& process) {
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != EXIT_SUCCESS)
        return std::nullopt;
    return process.readAllStandardOutput().toStdString();
}

} // namespace

FetchURLSession::FetchURLSession(std::filesystem::path program, Log& log)
    : FetchURLSession(std::move(program), log, Limits()) {}

FetchURLSession::FetchURLSession(std::filesystem::path program, Log& log, Limits limits)
    : m_program(std::move(program))
    , m_log(log)
    , m_limits(limits) {}

FetchURLSession::~FetchURLSession() {
    for (auto* process : m_processes.findChildren<QProcess*>()) {
        process->disconnect();
        process->kill();
        process->waitForFinished();
    }
}

void FetchURLSession::dataTask(const std::string& url, CompletionHandler completionHandler) {
    auto* process = new QProcess(&m_processes); // until one of the two ends below
    process->setStandardInputFile(QProcess::nullDevice());
    process->setChildProcessModifier(&becomeOrdinaryProgram);
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QObject::connect(process, &QProcess::finished, process, [process, completionHandler] {
        process->deleteLater();
        completionHandler(documentFrom(*process));
    });
    QObject::connect(process, &QProcess::errorOccurred, process, [=, this](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart) // else it has not finished either
            return;
        process->deleteLater();
        m_log.diagnose(m_program.string() + " cannot be started");
        completionHandler(std::nullopt);
    });
    process->start(QString::fromStdString(m_program.string()),
                   {QString::fromStdString(url), QString::number(m_limits.bytes),
                    QString::number(m_limits.time.count())});
}

} // namespace tavro
