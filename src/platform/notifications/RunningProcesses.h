#pragma once

#include <string>
#include <vector>

namespace tavro {

enum class ProcessID : int {};

/// The processes of the session that belong to applications.
class RunningProcesses {
public:
    virtual ~RunningProcesses() = default;
    virtual std::vector<ProcessID> withBundleIdentifier(const std::string& identifier) const = 0;
    /// Ends it at once, without asking it. One that is gone is ignored.
    virtual void forceTerminate(ProcessID process) = 0;
};

} // namespace tavro
