#pragma once

#include "platform/notifications/NotificationSilencing.h"
#include "platform/process/MainQueue.h"
#include "platform/simulated/process/Journal.h"
#include "platform/simulated/process/SimulatedLog.h"

namespace tavro {

/// The switch of a notification server.
class SimulatedNotificationSilencing final : public NotificationSilencing {
public:
    SimulatedNotificationSilencing(Journal& journal, SimulatedLog& log, MainQueue& queue)
        : m_journal(journal)
        , m_log(log)
        , m_queue(queue) {}

    void askIsOn(std::function<void(std::optional<bool>)> answer) override;
    void setOn(bool isOn, std::function<void(bool)> completion) override;

    bool state = false;
    /// There is no server, or it does not answer.
    bool fails = false;

private:
    bool reportsFailure();

    Journal& m_journal;
    SimulatedLog& m_log;
    MainQueue& m_queue;
    bool m_reported = false;
};

} // namespace tavro
