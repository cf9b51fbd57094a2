#pragma once

#include "platform/input/MouseEvents.h"
#include "platform/process/ObserverList.h"
#include "platform/simulated/process/Journal.h"

#include <set>

namespace tavro {

/// The pointer, and the system's input stream.
class SimulatedMouseEvents final : public MouseEvents {
public:
    explicit SimulatedMouseEvents(Journal& journal)
        : m_journal(journal) {}

    Point mouseLocation() const override { return location; }
    std::optional<MouseEvent> create(EventSourceState source, MouseEventType type, Point place,
                                     MouseButton button) override;
    void post(EventTap tap, const MouseEvent& event) override;

    /// The observer gets each event that is posted.
    [[nodiscard]] Observation didPost(std::function<void(MouseEvent)> observer);

    Point location{400, 300};
    /// Which events, counted from 0 on, cannot be created.
    std::set<int> refused;

private:
    Journal& m_journal;
    int m_asked = 0;
    ObserverList<MouseEvent> m_posted;
};

} // namespace tavro
