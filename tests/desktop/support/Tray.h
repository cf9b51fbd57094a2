#pragma once

#include "XServer.h"

#include <algorithm>

/// The right end of the session's panel, where the status item stands, and left of it the microphone's button
/// during a presentation.
class Tray {
public:
    explicit Tray(const XServer& server)
        : m_server(server) {}

    Point itemPlace() const { return {1908, 14}; }
    Pixels picture() const { return m_server.screenshot(end); }
    bool isEmpty() const { return isBare(end); }
    bool showsItem() const { return !isBare(end) && !showsBezel(); }
    bool showsItemAndButton() const { return !isBare(end) && showsBezel(); }
    Point buttonPlace() const { return {1880, 14}; }

private:
    static constexpr Rect end{1896, 0, 24, 28}, left{1868, 0, 24, 28};

    /// Whether nothing is drawn on the panel there: each row is of one colour.
    bool isBare(const Rect& area) const {
        const auto pixels = m_server.screenshot(area);
        for (std::size_t i = 1; i < pixels.size(); ++i)
            if (i % static_cast<std::size_t>(area.width) != 0 && pixels[i] != pixels[i - 1])
                return false;
        return true;
    }

    /// The windows' buttons, which are grey or blue, may reach as far as that.
    bool showsBezel() const {
        constexpr auto strong = 0x90, weak = 0x60, least = 50;
        const auto isOfBezel = [](std::uint32_t pixel) {
            const auto red = pixel >> 16 & 0xFF, green = pixel >> 8 & 0xFF, blue = pixel & 0xFF;
            return blue < weak && (red > strong) != (green > strong);
        };
        return std::ranges::count_if(m_server.screenshot(left), isOfBezel) > least;
    }

    const XServer& m_server;
};
