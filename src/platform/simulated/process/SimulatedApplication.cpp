#include "platform/simulated/process/SimulatedApplication.h"

#include <utility>

namespace tavro {

SimulatedApplication::SimulatedApplication(Journal& journal, SimulatedMainQueue& queue,
                                           SimulatedUserDefaults& userDefaults, SimulatedWorkspace& workspace,
                                           std::function<void()> endProcess)
    : m_journal(journal)
    , m_queue(queue)
    , m_userDefaults(userDefaults)
    , m_workspace(workspace)
    , m_endProcess(std::move(endProcess))
    , m_resignation(workspace.selfResignsActive([this] {
        if (m_delegate)
            m_delegate->applicationWillResignActive();
    })) {}

int SimulatedApplication::run(ApplicationDelegate& delegate) {
    m_delegate = &delegate;
    m_exitStatus.reset();
    m_workspace.startSelf();
    delegate.applicationDidFinishLaunching();
    m_queue.runUntilIdle();
    return m_exitStatus.value_or(0);
}

void SimulatedApplication::activate(bool ignoringOtherApps) {
    m_journal.record("application.activate", ignoringOtherApps);
    m_workspace.userActivates(ApplicationID::self);
}

void SimulatedApplication::exit(int status) {
    m_journal.record("application.exit", status);
    m_exitStatus = status;
    m_userDefaults.synchronize();
    m_endProcess();
}

void SimulatedApplication::deliver(Event event, const std::function<void()>& handler) {
    const auto previous = std::exchange(m_currentEvent, event);
    handler();
    m_currentEvent = previous;
}

void SimulatedApplication::reopen() {
    if (m_delegate)
        m_delegate->applicationDidReopen();
}

void SimulatedApplication::terminate() {
    if (!m_delegate)
        return;
    std::exchange(m_delegate, nullptr)->applicationWillTerminate();
    m_exitStatus = 0;
    m_userDefaults.synchronize();
    m_endProcess();
}

} // namespace tavro
