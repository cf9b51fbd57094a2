#include "platform/linux/notifications/SettingsNotificationSwitch.h"

#include <QProcess>

namespace tavro {

namespace {

constexpr int milliseconds = 500;

/// What the tool prints, without the end of the line.
Result<QByteArray, std::string> gsettings(const QStringList& arguments) {
    QProcess process;
    process.start("gsettings", arguments);
    if (!process.waitForFinished(milliseconds)) {
        const bool isRunning = process.state() == QProcess::Running;
        process.kill();
        process.waitForFinished(milliseconds);
        return std::string(isRunning ? "gsettings does not answer" : "gsettings cannot be run");
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return process.readAllStandardError().simplified().toStdString();
    return process.readAllStandardOutput().trimmed();
}

} // namespace

Result<bool, std::string> SettingsNotificationSwitch::isOn() {
    const auto value = gsettings({"get", m_key.schema, m_key.name});
    if (!value)
        return value.error();
    return (*value == "true") == m_key.valueWhenOn;
}

std::optional<std::string> SettingsNotificationSwitch::setOn(bool isOn) {
    const auto done =
        gsettings({"set", m_key.schema, m_key.name, isOn == m_key.valueWhenOn ? "true" : "false"});
    return done ? std::nullopt : std::optional(done.error());
}

} // namespace tavro
