#pragma once

#include "platform/input/EventMonitors.h"

#include <map>

namespace tavro {

/// The events that a user sends to this application.
class SimulatedEventMonitors final : public EventMonitors {
public:
    EventMonitorRef addLocalMonitorForEvents(unsigned mask, EventMonitorHandler handler) override;
    void removeMonitor(EventMonitorRef monitor) override { m_monitors.erase(monitor); }

    /// Whether the event, as the monitors leave it, comes to its target.
    bool send(const Event& event);
    std::size_t count() const { return m_monitors.size(); }
    /// The process has ended.
    void endProcess() { m_monitors.clear(); }

private:
    struct Monitor {
        unsigned mask;
        EventMonitorHandler handler;
    };

    std::uint64_t m_last = 0;
    std::map<EventMonitorRef, Monitor> m_monitors;
};

} // namespace tavro
