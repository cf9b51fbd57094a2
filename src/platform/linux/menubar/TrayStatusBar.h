#pragma once

#include "platform/linux/menubar/TrayHost.h"
#include "platform/menubar/StatusBar.h"

namespace tavro {

class EventSource;

/// The desktop's tray.
class TrayStatusBar final : public StatusBar {
public:
    TrayStatusBar(XConnection& x, MainQueue& queue, Log& log, EventSource& events);

    std::shared_ptr<StatusItem> statusItem(double length) override;
    TrayHost& host() { return m_host; }

private:
    XConnection& m_x;
    MainQueue& m_queue;
    TrayHost m_host;
    EventSource& m_events;
};

} // namespace tavro
