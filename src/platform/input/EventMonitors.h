#pragma once

#include "platform/input/Event.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace tavro {

/// What the system knows a monitor by; `none` is never given out.
enum class EventMonitorRef : std::uint64_t { none = 0 };

/// Sees an event before its target does. The event that it returns goes on to the target; none drops it.
using EventMonitorHandler = std::function<std::optional<Event>(const Event&)>;

/// Monitors of the events that come to this application. Main thread only.
///
/// Keys are reported with their modifiers: a modifier pressed by itself is no event here. The release of a
/// button of the mouse over a control that follows it by itself from the press on, such as a push button, is
/// not seen.
class EventMonitors {
public:
    virtual ~EventMonitors() = default;
    /// From now on the handler sees each event whose type is in the mask. It may remove itself.
    virtual EventMonitorRef addLocalMonitorForEvents(unsigned mask, EventMonitorHandler handler) = 0;
    /// One that is not there is ignored.
    virtual void removeMonitor(EventMonitorRef monitor) = 0;
};

} // namespace tavro
