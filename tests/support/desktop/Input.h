#pragma once

#include "XClient.h"

#include <initializer_list>

/// Real pointer and key events, by XTEST.
class Input {
public:
    enum class Button : std::uint8_t { left = 1, middle = 2, right = 3 };
    /// X keycodes, the same in every keyboard layout.
    enum class Key : std::uint8_t {
        escape = 9,
        tab = 23,
        e = 26,
        enter = 36,
        p = 33,
        control = 37,
        a = 38,
        s = 39,
        d = 40,
        shift = 50,
        x = 53,
        m = 58,
        alt = 64,
        space = 65,
        f4 = 70,
        left = 113,
        super = 133,
    };

    explicit Input(XClient& server)
        : m_server(server) {}

    void moveTo(Point place);
    void click(Point place, Button button);
    void press(Key key);
    void release(Key key);
    /// With the modifiers held down.
    void type(std::initializer_list<Key> modifiers, Key key);
    void type(Key key) { type({}, key); }

private:
    void fake(std::uint8_t type, std::uint8_t detail, Point place = {});

    XClient& m_server;
};
