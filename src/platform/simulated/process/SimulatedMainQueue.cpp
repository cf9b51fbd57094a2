#include "platform/simulated/process/SimulatedMainQueue.h"

#include <algorithm>

namespace tavro {

void SimulatedMainQueue::async(std::function<void()> block) {
    asyncAfter(Duration(0), std::move(block));
}

void SimulatedMainQueue::asyncAfter(Duration delay, std::function<void()> block) {
    m_blocks.emplace(std::pair(m_now + std::max(delay, Duration(0)), m_next++), std::move(block));
}

void SimulatedMainQueue::runUntilIdle() {
    runUntil(m_now);
}

void SimulatedMainQueue::advance(Duration time) {
    const auto end = m_now + time;
    runUntil(end);
    m_now = end;
}

void SimulatedMainQueue::runUntil(Duration time) {
    while (!m_blocks.empty() && m_blocks.begin()->first.first <= time) {
        auto entry = m_blocks.extract(m_blocks.begin());
        m_now = std::max(m_now, entry.key().first);
        entry.mapped()();
    }
}

} // namespace tavro
