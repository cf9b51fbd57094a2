#pragma once

#include "platform/linux/bus/BoundedBus.h"
#include "platform/linux/notifications/NotificationSwitch.h"

#include <memory>

namespace tavro {

/// KDE Plasma: an inhibition that applications ask for on the bus. The server ends it when the connection
/// that asked for it goes, so that it does not outlive us; each one has a connection of its own, which also
/// ends an inhibition whose answer has not come. Do Not Disturb that the user has switched on is the user's
/// to end.
class PlasmaInhibition final : public NotificationSwitch {
public:
    explicit PlasmaInhibition(BoundedBus& bus);
    ~PlasmaInhibition() override;

    Result<bool, std::string> isOn() override;
    std::optional<std::string> setOn(bool isOn) override;

private:
    class Held;
    std::optional<std::string> inhibit();

    BoundedBus& m_bus;
    std::unique_ptr<Held> m_held;
};

} // namespace tavro
