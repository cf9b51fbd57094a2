#include "PreferencesTest.h"

xcb_window_t PreferencesTest::chooser(const TavroProcess& tavro) const {
    auto others = windows(tavro);
    std::erase(others, preferences);
    return others.size() == 1 ? others.front() : xcb_window_t{XCB_NONE};
}

void PreferencesTest::clickInPreferences(Point point) {
    const auto corner = server.place(preferences);
    input.click({corner.x + point.x, corner.y + point.y}, Input::Button::left);
}

testing::AssertionResult PreferencesTest::keyboardBecomesFree() {
    return server.eventually("the keyboard free", [this] {
        const bool isFree = server.grabKeyboard();
        if (isFree)
            server.ungrabKeyboard();
        return isFree;
    });
}
