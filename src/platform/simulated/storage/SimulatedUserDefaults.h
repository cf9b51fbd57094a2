#pragma once

#include "platform/simulated/process/Journal.h"
#include "platform/simulated/process/SimulatedLog.h"
#include "platform/simulated/process/SimulatedMainQueue.h"
#include "platform/storage/UserDefaults.h"

#include <map>

namespace tavro {

/// User defaults with a disk: what is written is in force at once, on the disk when the main queue is idle,
/// and lost with the process if it never got there.
class SimulatedUserDefaults final : public UserDefaults {
public:
    SimulatedUserDefaults(Journal& journal, SimulatedLog& log, SimulatedMainQueue& queue);

    std::optional<PropertyList> object(const std::string& key) const override;
    void setObject(const std::string& key, PropertyList value) override;
    void removeObject(const std::string& key) override;
    bool synchronize() override;
    void whenWritten(std::function<void()> block) override;

    /// A fault: the disk takes no writes while it is set.
    bool failWrites = false;
    /// The process has ended: the next one starts from the disk.
    void endProcess();

private:
    void flushSoon();

    Journal& m_journal;
    SimulatedLog& m_log;
    SimulatedMainQueue& m_queue;
    std::map<std::string, PropertyList> m_values;
    std::map<std::string, PropertyList> m_disk;
    bool m_flushQueued = false;
    bool m_failureReported = false;
};

} // namespace tavro
