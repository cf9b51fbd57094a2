#pragma once

namespace tavro {

/// What the popover's view asks of the application around it.
class Shell {
public:
    virtual ~Shell() = default;
    virtual void closePopover() = 0;
    /// Brings the desktop into the state that the settings say.
    virtual void toggle() = 0;
    /// Brings the preferences window to the front, or makes one.
    virtual void openPreferenceWindow() = 0;
};

} // namespace tavro
