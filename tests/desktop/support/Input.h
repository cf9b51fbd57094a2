#pragma once

#include "XServer.h"

/// Real pointer and key events, by XTEST.
class Input {
public:
    enum class Button : std::uint8_t { left = 1, middle = 2, right = 3 };
    /// X keycodes, the same in every keyboard layout.
    enum class Key : std::uint8_t { escape = 9, control = 37 };

    explicit Input(XServer& server) : m_server(server) {}

    void moveTo(Point place);
    void click(Point place, Button button);
    void press(Key key);
    void release(Key key);

private:
    void fake(std::uint8_t type, std::uint8_t detail, Point place = {});

    XServer& m_server;
};
