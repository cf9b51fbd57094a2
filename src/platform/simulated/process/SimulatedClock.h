#pragma once

#include "platform/process/Clock.h"
#include "platform/simulated/process/Journal.h"
#include "platform/simulated/process/SimulatedMainQueue.h"

namespace tavro {

/// The time of day that a test sets; waiting takes none of the test's.
class SimulatedClock final : public Clock {
public:
    SimulatedClock(Journal& journal, SimulatedMainQueue& queue)
        : m_journal(journal)
        , m_queue(queue) {}

    PropertyList::Date now() const override { return {m_queue.now().count()}; }
    TimeOfDay localTime() const override { return timeOfDay; }
    void wait(std::chrono::duration<double> time) override {
        m_journal.record("clock.wait", time.count());
        m_queue.block(time);
    }

    TimeOfDay timeOfDay{12, 0};

private:
    Journal& m_journal;
    SimulatedMainQueue& m_queue;
};

} // namespace tavro
