#include "platform/simulated/storage/SimulatedUserDefaults.h"

#include <utility>

namespace tavro {

SimulatedUserDefaults::SimulatedUserDefaults(Journal& journal, SimulatedLog& log, SimulatedMainQueue& queue)
    : m_journal(journal)
    , m_log(log)
    , m_queue(queue) {}

std::optional<PropertyList> SimulatedUserDefaults::object(const std::string& key) const {
    const auto entry = m_values.find(key);
    return entry == m_values.end() ? std::nullopt : std::optional(entry->second);
}

void SimulatedUserDefaults::setObject(const std::string& key, PropertyList value) {
    m_journal.record("userDefaults.setObject", key, value);
    m_values.insert_or_assign(key, std::move(value));
    flushSoon();
}

void SimulatedUserDefaults::removeObject(const std::string& key) {
    m_journal.record("userDefaults.removeObject", key);
    m_values.erase(key);
    flushSoon();
}

bool SimulatedUserDefaults::synchronize() {
    if (!failWrites) {
        m_disk = m_values;
        return true;
    }
    if (!std::exchange(m_failureReported, true))
        m_log.diagnose("User defaults cannot be written");
    return false;
}

void SimulatedUserDefaults::whenWritten(std::function<void()> block) {
    synchronize();
    block();
}

void SimulatedUserDefaults::flushSoon() {
    if (std::exchange(m_flushQueued, true))
        return;
    m_queue.async([this] {
        m_flushQueued = false;
        synchronize();
    });
}

void SimulatedUserDefaults::endProcess() {
    m_values = m_disk;
    m_flushQueued = false;
    m_failureReported = false;
}

} // namespace tavro
