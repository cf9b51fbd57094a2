#pragma once

#include "platform/menubar/TouchBar.h"

#include <memory>
#include <string>

namespace tavro {

/// The area of the Touch Bar that is there whichever application is in front. An item shows there while it is
/// in the system tray and its identifier has presence; a touch on it runs the action of its button. A machine
/// without a Touch Bar shows the button elsewhere. Main thread only.
class ControlStrip {
public:
    virtual ~ControlStrip() = default;
    /// Whether a bar that covers the whole Touch Bar has a close box while this application is in front.
    virtual void showsCloseBoxWhenFrontMost(bool shows) = 0;
    /// Stays in force for items that come later. No identifier has presence at first.
    virtual void setPresence(const std::string& identifier, bool isPresent) = 0;
    /// An item that is in the tray already stays there, once.
    virtual void addSystemTrayItem(std::shared_ptr<CustomTouchBarItem> item) = 0;
    /// An item that is not there is ignored.
    virtual void removeSystemTrayItem(const std::shared_ptr<CustomTouchBarItem>& item) = 0;
};

} // namespace tavro
