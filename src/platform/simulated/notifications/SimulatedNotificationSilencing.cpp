#include "platform/simulated/notifications/SimulatedNotificationSilencing.h"

#include <utility>

namespace tavro {

std::optional<bool> SimulatedNotificationSilencing::isOn() {
    return reportsFailure() ? std::nullopt : std::optional(state);
}

bool SimulatedNotificationSilencing::setOn(bool isOn) {
    m_journal.record("notificationSilencing.setOn", isOn);
    if (reportsFailure())
        return false;
    state = isOn;
    return true;
}

bool SimulatedNotificationSilencing::reportsFailure() {
    if (fails && !std::exchange(m_reported, true))
        m_log.diagnose("Notifications cannot be kept back");
    if (!fails)
        m_reported = false;
    return fails;
}

} // namespace tavro
