#pragma once

#include <functional>
#include <optional>

namespace tavro {

/// The switch of the notification server that runs on this machine. No call waits for the server: requests
/// are carried out one by one in their order, each within a bound, and their blocks run in that order on the
/// main queue, never inside the call. What fails says so in one line of the log, once until something else
/// happens. Main thread only.
class NotificationSilencing {
public:
    virtual ~NotificationSilencing() = default;
    /// Asks whether notifications are kept back now, whoever asked for it; none when that is unknown.
    virtual void askIsOn(std::function<void(std::optional<bool> isOn)> answer) = 0;
    /// Keeps notifications back, or lets them through again, also where the user had them kept back. Setting
    /// what is the case already does no harm. Not done when it did not happen, or not yet: a server that is
    /// busy may still do it when it comes to it.
    virtual void setOn(bool isOn, std::function<void(bool isDone)> completion) = 0;
};

} // namespace tavro
