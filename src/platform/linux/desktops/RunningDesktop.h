#pragma once

#include "platform/linux/desktops/Desktop.h"

#include <memory>

namespace tavro {

class BoundedBus;
class GSettings;

/// The first desktop in XDG_CURRENT_DESKTOP ("ubuntu:GNOME") that is known here; where none is, one of which
/// nothing is known. Bus and settings must outlive it.
std::unique_ptr<Desktop> runningDesktop(BoundedBus& bus, const GSettings& settings);

} // namespace tavro
