#include "platform/simulated/applications/SimulatedRunningApplication.h"

namespace tavro {

SimulatedRunningApplication::SimulatedRunningApplication(ApplicationID id, std::string name,
                                                         SimulatedWorkspace& workspace)
    : m_id(id)
    , m_name(std::move(name))
    , m_workspace(workspace) {}

void SimulatedRunningApplication::hide() {
    m_workspace.m_journal.record("runningApplication.hide", m_name);
    m_workspace.m_isHiding = true;
    m_workspace.hide(m_id);
}

void SimulatedRunningApplication::unhide() {
    m_workspace.m_journal.record("runningApplication.unhide", m_name);
    m_workspace.unhide(m_id);
}

void SimulatedRunningApplication::activate(unsigned options) {
    m_workspace.m_journal.record("runningApplication.activate", m_name, options);
    m_workspace.activate(m_id);
}

bool SimulatedRunningApplication::isEqual(const RunningApplication& other) const {
    const auto* application = dynamic_cast<const SimulatedRunningApplication*>(&other);
    return application && application->m_id == m_id;
}

} // namespace tavro
