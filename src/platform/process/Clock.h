#pragma once

#include "platform/storage/PropertyList.h"

#include <chrono>

namespace tavro {

/// The time that people go by, and waiting.
class Clock {
public:
    struct TimeOfDay {
        int hour = 0;
        int minute = 0;
    };

    virtual ~Clock() = default;
    virtual PropertyList::Date now() const = 0;
    /// In the user's calendar and time zone.
    virtual TimeOfDay localTime() const = 0;
    /// Blocks the main thread; nothing queued runs meanwhile.
    virtual void wait(std::chrono::duration<double> time) = 0;
};

} // namespace tavro
