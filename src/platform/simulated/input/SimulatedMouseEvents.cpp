#include "platform/simulated/input/SimulatedMouseEvents.h"

namespace tavro {

std::optional<MouseEvent> SimulatedMouseEvents::create(EventSourceState source, MouseEventType type,
                                                       Point place, MouseButton button) {
    if (refused.contains(m_asked++))
        return std::nullopt;
    return MouseEvent{source, type, place, button, 0};
}

void SimulatedMouseEvents::post(EventTap tap, const MouseEvent& event) {
    m_journal.record("mouseEvents.post", static_cast<int>(tap), static_cast<int>(event.source),
                     static_cast<int>(event.type), event.location, static_cast<int>(event.button),
                     event.flags);
    m_posted.notify(event);
}

Observation SimulatedMouseEvents::didPost(std::function<void(MouseEvent)> observer) {
    return m_posted.add(std::move(observer));
}

} // namespace tavro
