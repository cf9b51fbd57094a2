#pragma once

#include "platform/process/Application.h"
#include "platform/simulated/applications/SimulatedWorkspace.h"
#include "platform/simulated/process/Journal.h"
#include "platform/simulated/process/SimulatedMainQueue.h"
#include "platform/simulated/storage/SimulatedUserDefaults.h"

#include <functional>
#include <optional>

namespace tavro {

/// The program under test as the system sees it. `run` returns as soon as the program is idle: the test is
/// the user and the system from then on.
class SimulatedApplication final : public Application {
public:
    SimulatedApplication(Journal& journal, SimulatedMainQueue& queue, SimulatedUserDefaults& userDefaults,
                         SimulatedWorkspace& workspace, std::function<void()> endProcess);

    /// The exit status, or 0 while the program still runs.
    int run(ApplicationDelegate& delegate) override;
    void activate(bool ignoringOtherApps) override;
    Event currentEvent() const override { return m_currentEvent; }
    void exit(int status) override;

    /// Handles an event as the current one.
    void deliver(Event event, const std::function<void()>& handler);
    /// The user starts the program again.
    void reopen();
    /// The system asks the program to end: log-out, shut-down, an explicit request.
    void terminate();

    bool isRunning() const { return m_delegate != nullptr; }
    /// None while the program has not ended yet.
    std::optional<int> exitStatus() const { return m_exitStatus; }
    /// The process is gone, however it went.
    void endProcess() { m_delegate = nullptr; }

private:
    Journal& m_journal;
    SimulatedMainQueue& m_queue;
    SimulatedUserDefaults& m_userDefaults;
    SimulatedWorkspace& m_workspace;
    std::function<void()> m_endProcess;
    Observation m_resignation;
    ApplicationDelegate* m_delegate = nullptr;
    Event m_currentEvent;
    std::optional<int> m_exitStatus;
};

} // namespace tavro
