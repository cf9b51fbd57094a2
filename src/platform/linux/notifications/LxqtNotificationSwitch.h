#pragma once

#include "platform/linux/notifications/NotificationSwitch.h"

namespace tavro {

/// The key doNotDisturb of LXQt's notification settings, a file that the server watches. Stays when we die.
class LxqtNotificationSwitch final : public NotificationSwitch {
public:
    Result<bool, std::string> isOn() override;
    std::optional<std::string> setOn(bool isOn) override;
};

} // namespace tavro
