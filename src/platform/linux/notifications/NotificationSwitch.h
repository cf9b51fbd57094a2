#pragma once

#include "platform/process/Result.h"

#include <optional>
#include <string>

namespace tavro {

/// The switch of one kind of notification server. Failures are one line that says why.
class NotificationSwitch {
public:
    virtual ~NotificationSwitch() = default;
    virtual Result<bool, std::string> isOn() = 0;
    /// None on success.
    virtual std::optional<std::string> setOn(bool isOn) = 0;
};

} // namespace tavro
