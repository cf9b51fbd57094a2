#pragma once

#include "platform/input/Event.h"

#include <functional>

namespace tavro {

/// Where an event comes in: it is the application's current one while its handler runs.
class EventSource {
public:
    virtual ~EventSource() = default;
    virtual void deliver(Event event, const std::function<void()>& handler) = 0;
};

} // namespace tavro
