#pragma once

#include "platform/linux/bus/BoundedBus.h"
#include "platform/linux/bus/GSettings.h"
#include "platform/linux/notifications/NotificationSwitch.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace tavro {

class Log;

/// The switch of whatever notification server runs: the one that owns org.freedesktop.Notifications on the
/// session bus, known by what it says of itself (Desktop Notifications standard, GetServerInformation).
/// It is asked that once; another owner of the name is another server. Calls wait for its answer, within the
/// bound of the bus; what fails says so in one line of the log, once until something else happens.
class DesktopSilencing final {
public:
    /// The block keeps the bubbles of a server without a switch out of sight, or shows them again.
    DesktopSilencing(BoundedBus& bus, const GSettings& settings, Log& log,
                     std::function<void(bool)> keepBubblesAway)
        : m_bus(bus)
        , m_settings(settings)
        , m_log(log)
        , m_keepBubblesAway(std::move(keepBubblesAway)) {}

    /// None when that is unknown.
    std::optional<bool> isOn();
    /// False when it did not happen, or not yet.
    bool setOn(bool isOn);
    /// Does what the last `setOn` did not; for when a server answers again.
    void catchUp();

private:
    NotificationSwitch* serverSwitch();
    Result<std::unique_ptr<NotificationSwitch>, std::string> identify();
    QString owner();
    void report(const std::string& why);

    BoundedBus& m_bus;
    const GSettings& m_settings;
    Log& m_log;
    const std::function<void(bool)> m_keepBubblesAway;
    QString m_owner;
    std::unique_ptr<NotificationSwitch> m_switch;
    std::string m_reported;     // last, and nothing has worked since
    std::optional<bool> m_owed; // asked for, and not done
};

} // namespace tavro
