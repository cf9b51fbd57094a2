#include "platform/simulated/input/SimulatedEventMonitors.h"

namespace tavro {

EventMonitorRef SimulatedEventMonitors::addLocalMonitorForEvents(unsigned mask, EventMonitorHandler handler) {
    const EventMonitorRef reference{++m_last};
    m_monitors.emplace(reference, Monitor{mask, std::move(handler)});
    return reference;
}

bool SimulatedEventMonitors::send(const Event& event) {
    std::optional<Event> current = event;
    for (const auto& [reference, monitor] : std::map(m_monitors))
        if (current && m_monitors.contains(reference) && (monitor.mask & eventMask(current->type)))
            current = monitor.handler(*current);
    return current.has_value();
}

} // namespace tavro
