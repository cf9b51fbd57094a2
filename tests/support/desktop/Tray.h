#pragma once

#include "XClient.h"

#include <algorithm>

/// The right end of the session's panel, where the status item stands, and left of it the microphone's button
/// during a presentation.
class Tray {
public:
    explicit Tray(const XClient& server)
        : m_server(server) {}

    Point itemPlace() const { return {1908, 14}; }
    Pixels picture() const { return m_server.screenshot(end); }
    bool isEmpty() const { return isBare(end); }
    bool showsItem() const { return !isBare(end) && !showsButton(); }
    bool showsItemAndButton() const { return !isBare(end) && showsButton(); }
    Point buttonPlace() const { return {1880, 14}; }
    bool showsRedBezel() const {
        return shows([](int red, int green, int blue) { return red > 0x90 && green < 0x40 && blue < 0x40; });
    }
    bool showsGreenBezel() const {
        return shows([](int red, int green, int blue) { return green > 0x90 && red < 0x80 && blue < 0x80; });
    }

private:
    bool showsButton() const { return showsRedBezel() || showsGreenBezel(); }
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
    bool shows(bool (*isOfBezel)(int red, int green, int blue)) const {
        constexpr int least = 50;
        return std::ranges::count_if(m_server.screenshot(left), [isOfBezel](std::uint32_t pixel) {
                   const auto part = [pixel](int shift) { return static_cast<int>(pixel >> shift & 0xFF); };
                   return isOfBezel(part(16), part(8), part(0));
               }) > least;
    }

    const XClient& m_server;
};
