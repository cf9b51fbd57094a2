#include "platform/linux/notifications/SettingsNotificationSwitch.h"

namespace tavro {

Result<bool, std::string> SettingsNotificationSwitch::isOn() {
    const auto value = m_settings.get(m_key.schema, m_key.name);
    if (!value)
        return value.error();
    return value->toBool() == m_key.valueWhenOn;
}

std::optional<std::string> SettingsNotificationSwitch::setOn(bool isOn) {
    return m_settings.set(m_key.schema, m_key.name, isOn == m_key.valueWhenOn);
}

} // namespace tavro
