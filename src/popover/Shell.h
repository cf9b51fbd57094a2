#pragma once

#include "platform/process/MainQueue.h"

#include <optional>

namespace tavro {

/// What the popover's view asks of the application around it.
class Shell {
public:
    virtual ~Shell() = default;
    /// Inverts whether presentation mode is on, at once. When the delay is over, or before this returns where
    /// there is none, the popover closes, which nobody presents, and the desktop follows.
    virtual void switchPresentationMode(std::optional<MainQueue::Duration> delay) = 0;
    /// Brings the preferences window to the front, or makes one.
    virtual void openPreferenceWindow() = 0;
};

} // namespace tavro
