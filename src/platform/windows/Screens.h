#pragma once

#include "platform/storage/PropertyList.h"
#include "platform/windows/Geometry.h"
#include "platform/windows/Identifiers.h"

#include <optional>
#include <vector>

namespace tavro {

/// A screen as it was when it was asked for.
struct Screen {
    Rect frame;
    /// Properties of the device; "NSScreenNumber" holds the display identifier as a number.
    PropertyList::Dictionary deviceDescription;
    bool operator==(const Screen&) const = default;
};

/// The screens. An identifier stays with its display for as long as the window server runs.
class Screens {
public:
    virtual ~Screens() = default;
    /// All screens, the one with the menu bar first. Empty when there is none.
    virtual std::vector<Screen> screens() const = 0;
    /// The screen that contains the window with keyboard focus; none when there is no screen.
    virtual std::optional<Screen> mainScreen() const = 0;
    /// The display with the menu bar; none when there is no screen.
    virtual std::optional<DisplayID> mainDisplayID() const = 0;
    /// The rectangle of a display in display coordinates: points, origin at the upper left of the first
    /// screen, y downwards. Empty for a display that is not there.
    virtual Rect displayBounds(DisplayID display) const = 0;
};

} // namespace tavro
