#pragma once

#include "platform/input/EventMonitors.h"
#include "platform/linux/input/XKeyboard.h"

#include <QObject>

#include <map>

class QKeyEvent;
class QMouseEvent;

namespace tavro {

/// The events of the toolkit's windows, seen before their widgets see them.
class QtEventMonitors final : public QObject, public EventMonitors {
public:
    explicit QtEventMonitors(const XKeyboard& keyboard)
        : m_keyboard(keyboard) {}

    EventMonitorRef addLocalMonitorForEvents(unsigned mask, EventMonitorHandler handler) override;
    void removeMonitor(EventMonitorRef monitor) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Monitor {
        unsigned mask;
        EventMonitorHandler handler;
    };

    std::optional<Event> describe(const QKeyEvent& event) const;
    std::optional<Event> describe(const QMouseEvent& event) const;
    unsigned modifierFlags(std::uint32_t state) const;
    bool wants(EventType type) const;
    bool isDropped(const Event& event);

    const XKeyboard& m_keyboard;
    std::uint64_t m_last = 0;
    std::map<EventMonitorRef, Monitor> m_monitors;
    bool m_isFollowedByControl = false;
};

} // namespace tavro
