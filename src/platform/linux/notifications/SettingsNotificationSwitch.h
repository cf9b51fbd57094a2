#pragma once

#include "platform/linux/bus/GSettings.h"
#include "platform/linux/notifications/NotificationSwitch.h"

namespace tavro {

/// A Boolean of GSettings, for GNOME, MATE and Cinnamon. Stays when we die.
class SettingsNotificationSwitch final : public NotificationSwitch {
public:
    struct Key {
        const char* schema;
        const char* name;
        bool valueWhenOn;
    };

    SettingsNotificationSwitch(const GSettings& settings, Key key)
        : m_settings(settings)
        , m_key(key) {}
    Result<bool, std::string> isOn() override;
    std::optional<std::string> setOn(bool isOn) override;

private:
    const GSettings& m_settings;
    Key m_key;
};

} // namespace tavro
