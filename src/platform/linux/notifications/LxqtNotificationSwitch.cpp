#include "platform/linux/notifications/LxqtNotificationSwitch.h"

#include <QSettings>
#include <QStandardPaths>

namespace tavro {

namespace {

constexpr auto key = "doNotDisturb"; // in the section [General], which the class leaves unnamed

/// Read and written as LXQt itself does it: by the toolkit's class, whole and under its lock.
QSettings notificationSettings() {
    return QSettings(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                         "/lxqt/notifications.conf",
                     QSettings::IniFormat);
}

} // namespace

Result<bool, std::string> LxqtNotificationSwitch::isOn() {
    const auto settings = notificationSettings();
    if (settings.status() != QSettings::NoError)
        return std::string("LXQt's notification settings cannot be read");
    return settings.value(key).toBool();
}

std::optional<std::string> LxqtNotificationSwitch::setOn(bool isOn) {
    auto settings = notificationSettings();
    settings.setValue(key, isOn);
    settings.sync();
    if (settings.status() != QSettings::NoError)
        return "LXQt's notification settings cannot be written";
    return std::nullopt;
}

} // namespace tavro
