#pragma once

#include "platform/linux/bus/BoundedBus.h"
#include "platform/linux/bus/GSettings.h"
#include "platform/linux/notifications/NotificationSwitch.h"
#include "platform/notifications/NotificationSilencing.h"

#include <memory>
#include <string>

namespace tavro {

class Log;

/// The switch of whatever notification server runs: the one that owns org.freedesktop.Notifications on the
/// session bus, known by what it says of itself (Desktop Notifications standard, GetServerInformation).
/// It is asked that once; another owner of the name is another server.
class DesktopSilencing final : public NotificationSilencing {
public:
    DesktopSilencing(BoundedBus& bus, const GSettings& settings, Log& log)
        : m_bus(bus)
        , m_settings(settings)
        , m_log(log) {}

    std::optional<bool> isOn() override;
    bool setOn(bool isOn) override;

private:
    NotificationSwitch* serverSwitch();
    Result<std::unique_ptr<NotificationSwitch>, std::string> identify();
    QString owner();
    void report(const std::string& why);

    BoundedBus& m_bus;
    const GSettings& m_settings;
    Log& m_log;
    QString m_owner;
    std::unique_ptr<NotificationSwitch> m_switch;
    std::string m_reported; // last, and nothing has worked since
};

} // namespace tavro
