#pragma once

#include "DesktopTest.h"

/// A test with the preferences window.
class PreferencesTest : public DesktopTest {
protected:
    using Key = Input::Key;

    /// The window besides, a file chooser or an alert.
    xcb_window_t chooser(const TavroProcess& tavro) const;
    void clickInPreferences(Point point);
    /// Asks the server for it as another program would.
    testing::AssertionResult keyboardBecomesFree();

    xcb_window_t preferences = XCB_NONE;
    /// In the window.
    static constexpr Point recorder{215, 157}, selectButton{207, 251};
};
