#include "Input.h"

#include <xcb/xtest.h>

void Input::moveTo(Point place) {
    fake(XCB_MOTION_NOTIFY, 0, place);
}

void Input::click(Point place, Button button) {
    moveTo(place);
    fake(XCB_BUTTON_PRESS, static_cast<std::uint8_t>(button));
    fake(XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(button));
}

void Input::press(Key key) {
    fake(XCB_KEY_PRESS, static_cast<std::uint8_t>(key));
}

void Input::release(Key key) {
    fake(XCB_KEY_RELEASE, static_cast<std::uint8_t>(key));
}

void Input::type(std::initializer_list<Key> modifiers, Key key) {
    for (const auto modifier : modifiers)
        press(modifier);
    press(key);
    release(key);
    for (const auto modifier : modifiers)
        release(modifier);
}

void Input::fake(std::uint8_t type, std::uint8_t detail, Point place) {
    xcb_test_fake_input(m_server.raw(), type, detail, XCB_CURRENT_TIME, m_server.root(),
                        static_cast<std::int16_t>(place.x), static_cast<std::int16_t>(place.y), 0);
    xcb_flush(m_server.raw());
}
