#pragma once

#include "platform/input/EventMonitors.h"

namespace tavro::KeyboardShortcuts {

/// Sees the application's events from `start` to its own end.
class LocalEventMonitor {
public:
    LocalEventMonitor(unsigned events, EventMonitorHandler callback)
        : m_events(events)
        , m_callback(std::move(callback)) {}
    ~LocalEventMonitor();
    LocalEventMonitor(const LocalEventMonitor&) = delete;
    LocalEventMonitor& operator=(const LocalEventMonitor&) = delete;

    void start();

private:
    unsigned m_events;
    EventMonitorHandler m_callback;
    EventMonitorRef m_monitor = EventMonitorRef::none;
};

} // namespace tavro::KeyboardShortcuts
