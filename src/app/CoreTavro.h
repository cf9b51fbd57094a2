#pragma once

#include "settings/OptionItem.h"

#include <vector>

namespace tavro {

class HideDesktop;
class UserSettings;

/// Posted on the process's notification centre at the end of every toggle.
inline constexpr const char* tavroToogleNotification = "TavroToogle";

/// The one place where presentation mode is switched. A small value over the shared objects: any two are
/// interchangeable.
class CoreTavro {
public:
    CoreTavro();

    /// Brings the desktop into the state that `settings.tavroIsOn` says, which the caller has just inverted.
    /// A step that fails reports itself, and the sequence goes on.
    void toggle() const;

    HideDesktop& hideDesktop;
    UserSettings& settings;

private:
    static void turnOn(const std::vector<OptionItem>& options, HideDesktop& hideDesktop);
    static void turnOff(const std::vector<OptionItem>& options, HideDesktop& hideDesktop);
};

} // namespace tavro
