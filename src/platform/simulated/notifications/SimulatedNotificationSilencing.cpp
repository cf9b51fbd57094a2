#include "platform/simulated/notifications/SimulatedNotificationSilencing.h"

#include <utility>

namespace tavro {

void SimulatedNotificationSilencing::askIsOn(std::function<void(std::optional<bool>)> answer) {
    m_queue.async([this, answer = std::move(answer)] {
        answer(reportsFailure() ? std::nullopt : std::optional(state));
    });
}

void SimulatedNotificationSilencing::setOn(bool isOn, std::function<void(bool)> completion) {
    m_queue.async([this, isOn, completion = std::move(completion)] {
        m_journal.record("notificationSilencing.setOn", isOn);
        const bool isDone = !reportsFailure();
        if (isDone)
            state = isOn;
        completion(isDone);
    });
}

bool SimulatedNotificationSilencing::reportsFailure() {
    if (fails && !std::exchange(m_reported, true))
        m_log.diagnose("Notifications cannot be kept back");
    if (!fails)
        m_reported = false;
    return fails;
}

} // namespace tavro
