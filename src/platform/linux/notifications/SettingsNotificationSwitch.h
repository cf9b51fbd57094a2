#pragma once

#include "platform/linux/notifications/NotificationSwitch.h"

namespace tavro {

/// A Boolean of GSettings, for GNOME and MATE, by the tool `gsettings`: its process can be given up when the
/// store does not answer, and a schema that is not installed ends only that one. Stays when we die.
class SettingsNotificationSwitch final : public NotificationSwitch {
public:
    struct Key {
        const char* schema;
        const char* name;
        bool valueWhenOn;
    };

    explicit SettingsNotificationSwitch(Key key)
        : m_key(key) {}
    Result<bool, std::string> isOn() override;
    std::optional<std::string> setOn(bool isOn) override;

private:
    Key m_key;
};

} // namespace tavro
