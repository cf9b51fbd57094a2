#include "KeyboardShortcuts/LocalEventMonitor.h"

#include "platform/process/Machine.h"
#include "platform/process/Process.h"

namespace tavro::KeyboardShortcuts {

LocalEventMonitor::~LocalEventMonitor() {
    if (m_monitor != EventMonitorRef::none)
        machine().eventMonitors().removeMonitor(m_monitor);
}

void LocalEventMonitor::start() {
    m_monitor = machine().eventMonitors().addLocalMonitorForEvents(m_events, m_callback);
}

} // namespace tavro::KeyboardShortcuts
