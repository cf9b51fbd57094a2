#include "platform/simulated/applications/SimulatedRunningApplication.h"

namespace tavro {

SimulatedRunningApplication::SimulatedRunningApplication(ApplicationID id, std::string name, Host& host,
                                                         Journal& journal)
    : m_id(id)
    , m_name(std::move(name))
    , m_host(host)
    , m_journal(journal) {}

void SimulatedRunningApplication::hide() {
    m_journal.record("runningApplication.hide", m_name);
    m_host.requestHide(m_id);
}

void SimulatedRunningApplication::unhide() {
    m_journal.record("runningApplication.unhide", m_name);
    m_host.unhide(m_id);
}

void SimulatedRunningApplication::activate(unsigned options) {
    m_journal.record("runningApplication.activate", m_name, options);
    m_host.activate(m_id);
}

bool SimulatedRunningApplication::isEqual(const RunningApplication& other) const {
    const auto* application = dynamic_cast<const SimulatedRunningApplication*>(&other);
    return application && application->m_id == m_id;
}

} // namespace tavro
