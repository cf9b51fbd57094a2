#include "platform/linux/menubar/TrayStatusBar.h"

#include "platform/linux/menubar/TrayStatusItem.h"

namespace tavro {

TrayStatusBar::TrayStatusBar(XConnection& x, MainQueue& queue, Log& log, EventSource& events)
    : m_x(x)
    , m_queue(queue)
    , m_host(x, queue, log)
    , m_events(events) {}

std::shared_ptr<StatusItem> TrayStatusBar::statusItem(double) {
    auto item = std::make_shared<TrayStatusItem>(m_x, m_queue, m_events);
    m_host.whenAvailable([this, weak = std::weak_ptr(item)] {
        if (const auto alive = weak.lock())
            alive->show(m_host);
    });
    return item;
}

} // namespace tavro
