#pragma once

#include "platform/notifications/DistributedNotificationCenter.h"
#include "platform/simulated/process/Journal.h"

namespace tavro {

/// Notifications to other processes, of which there are none that listen.
class SimulatedDistributedNotificationCenter final : public DistributedNotificationCenter {
public:
    explicit SimulatedDistributedNotificationCenter(Journal& journal)
        : m_journal(journal) {}

    void post(const std::string& name, bool deliverImmediately) override {
        m_journal.record("distributedNotificationCenter.post", name, deliverImmediately);
    }

private:
    Journal& m_journal;
};

} // namespace tavro
