#pragma once

#include <optional>

namespace tavro {

/// The switch of the notification server that runs on this machine. No call takes longer than a bound that a
/// person hardly notices, and none at all of a server that is known not to answer; what fails says so in one
/// line of the log, once until something else happens. Main thread only.
class NotificationSilencing {
public:
    virtual ~NotificationSilencing() = default;
    /// Whether notifications are kept back now, whoever asked for it; none when that cannot be told.
    virtual std::optional<bool> isOn() = 0;
    /// Keeps notifications back, or lets them through again, also where the user had them kept back. Setting
    /// what is the case already does no harm. False when it did not happen, or not yet: a server that is busy
    /// may still do it when it comes to it.
    virtual bool setOn(bool isOn) = 0;
};

} // namespace tavro
