#pragma once

#include "platform/notifications/NotificationSilencing.h"
#include "platform/simulated/process/Journal.h"
#include "platform/simulated/process/SimulatedLog.h"

namespace tavro {

/// The switch of a notification server.
class SimulatedNotificationSilencing final : public NotificationSilencing {
public:
    SimulatedNotificationSilencing(Journal& journal, SimulatedLog& log)
        : m_journal(journal)
        , m_log(log) {}

    std::optional<bool> isOn() override;
    bool setOn(bool isOn) override;

    bool state = false;
    /// There is no server, or it does not answer.
    bool fails = false;

private:
    bool reportsFailure();

    Journal& m_journal;
    SimulatedLog& m_log;
    bool m_reported = false;
};

} // namespace tavro
