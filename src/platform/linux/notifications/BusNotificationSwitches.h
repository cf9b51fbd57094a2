#pragma once

#include "platform/linux/bus/BoundedBus.h"
#include "platform/linux/bus/Xfconf.h"
#include "platform/linux/notifications/NotificationSwitch.h"

namespace tavro {

/// xfce4-notifyd: a setting of xfconf, which is there once somebody has set it. Stays when we die.
class XfceNotificationSwitch final : public NotificationSwitch {
public:
    explicit XfceNotificationSwitch(BoundedBus& bus)
        : m_xfconf(bus) {}
    Result<bool, std::string> isOn() override;
    std::optional<std::string> setOn(bool isOn) override;

private:
    Xfconf m_xfconf;
};

/// dunst: a property of the server, which keeps it until it ends itself.
class DunstNotificationSwitch final : public NotificationSwitch {
public:
    explicit DunstNotificationSwitch(BoundedBus& bus)
        : m_bus(bus) {}
    Result<bool, std::string> isOn() override;
    std::optional<std::string> setOn(bool isOn) override;

private:
    BoundedBus& m_bus;
};

/// mako: the mode "do-not-disturb" among those that are in force until the server ends. What a mode does is
/// written in the user's own configuration.
class MakoNotificationSwitch final : public NotificationSwitch {
public:
    explicit MakoNotificationSwitch(BoundedBus& bus)
        : m_bus(bus) {}
    Result<bool, std::string> isOn() override;
    std::optional<std::string> setOn(bool isOn) override;

private:
    Result<QStringList, std::string> modes();

    BoundedBus& m_bus;
};

/// swaync: a state of the server's control centre, stored. Stays when we die.
class SwayNotificationSwitch final : public NotificationSwitch {
public:
    explicit SwayNotificationSwitch(BoundedBus& bus)
        : m_bus(bus) {}
    Result<bool, std::string> isOn() override;
    std::optional<std::string> setOn(bool isOn) override;

private:
    BoundedBus& m_bus;
};

} // namespace tavro
