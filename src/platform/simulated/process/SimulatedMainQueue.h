#pragma once

#include "platform/process/MainQueue.h"

#include <cstdint>
#include <map>
#include <utility>

namespace tavro {

/// The main queue on a virtual clock, which only `advance` and `block` move.
class SimulatedMainQueue final : public MainQueue {
public:
    void async(std::function<void()> block) override;
    void asyncAfter(Duration delay, std::function<void()> block) override;

    /// Runs what is due now, and what that queues for now.
    void runUntilIdle();
    /// Lets time pass; each block that becomes due runs at its own time.
    void advance(Duration time);
    /// The main thread is busy for so long: what becomes due runs afterwards.
    void block(Duration time) { m_now += time; }
    Duration now() const { return m_now; }
    /// The process has ended: what it queued never runs.
    void clear() { m_blocks.clear(); }

private:
    void runUntil(Duration time);

    Duration m_now{0};
    std::uint64_t m_next = 0;
    std::map<std::pair<Duration, std::uint64_t>, std::function<void()>> m_blocks;
};

} // namespace tavro
