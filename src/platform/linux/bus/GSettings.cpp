#include "platform/linux/bus/GSettings.h"

#include "platform/linux/bus/GVariantText.h"
#include "platform/linux/process/Programs.h"

#include <QAbstractEventDispatcher>
#include <QProcess>
#include <QProcessEnvironment>

#include <memory>
#include <vector>

namespace tavro {

namespace {

/// Ends a process that is still running, and does not wait for its end.
struct GiveUp {
    void operator()(QProcess* process) const {
        if (process->state() == QProcess::NotRunning) {
            delete process;
            return;
        }
        process->setParent(QAbstractEventDispatcher::instance()); // should its end come after the thread's
        QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
        process->kill();
    }
};

using Tool = std::unique_ptr<QProcess, GiveUp>;

Tool start(const QStringList& arguments) {
    Tool tool(new QProcess);
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("CHARSET", "UTF-8"); // of what GLib prints; a locale's own may lack letters
    tool->setProcessEnvironment(environment);
    tool->setChildProcessModifier(&becomeOrdinaryProgram);
    tool->start("gsettings", arguments, QIODevice::ReadOnly);
    return tool;
}

Result<QString, std::string> finish(QProcess& tool, const QDeadlineTimer& deadline) {
    // In vain also for one that never started.
    if (!tool.waitForFinished(static_cast<int>(deadline.remainingTime())))
        return std::string(tool.state() == QProcess::NotRunning ? "gsettings cannot be run"
                                                                : "gsettings does not answer");
    if (tool.exitStatus() != QProcess::NormalExit || tool.exitCode() != 0)
        return tool.readAllStandardError().trimmed().toStdString();
    return QString::fromUtf8(tool.readAllStandardOutput());
}

} // namespace

QVariantMap parseSettings(const QString& schema, const QString& lines) {
    QVariantMap settings;
    for (const auto& line : lines.split('\n'))
        if (line.section(' ', 0, 0) == schema)
            settings[line.section(' ', 1, 1)] = parseGVariant(line.section(' ', 2));
    return settings;
}

GSettings::Settings GSettings::list(const QStringList& schemas, const QDeadlineTimer& deadline) const {
    constexpr qsizetype atOnce = 8;
    Settings settings;
    for (qsizetype next = 0; next < schemas.size() && !deadline.hasExpired(); next += atOnce) {
        // Side by side, so that their starts do not add up.
        std::vector<std::pair<QString, Tool>> tools;
        for (const auto& schema : schemas.mid(next, atOnce))
            tools.emplace_back(schema, start({"list-recursively", schema}));
        for (const auto& [schema, tool] : tools)
            if (const auto lines = finish(*tool, deadline))
                settings[schema] = parseSettings(schema.section(':', 0, 0), *lines);
    }
    return settings;
}

Result<QVariant, std::string> GSettings::get(const QString& schema, const QString& key) const {
    const auto value = finish(*start({"get", schema, key}), deadline());
    if (!value)
        return value.error();
    return parseGVariant(value->trimmed());
}

std::optional<std::string> GSettings::set(const QString& schema, const QString& key, bool value) const {
    const auto done = finish(*start({"set", schema, key, value ? "true" : "false"}), deadline());
    return done ? std::nullopt : std::optional(done.error());
}

} // namespace tavro
