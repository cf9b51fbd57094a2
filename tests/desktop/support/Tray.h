#pragma once

#include "XServer.h"

/// The right end of the session's panel, where the only item of its tray stands.
class Tray {
public:
    explicit Tray(const XServer& server) : m_server(server) {}

    Point itemPlace() const { return {1908, 14}; }
    Pixels picture() const { return m_server.screenshot(end); }
    bool isEmpty() const { return isBare(end); }
    bool showsOneItem() const { return !isBare(end) && isBare(leftOfIt); }

private:
    static constexpr Rect end{1896, 0, 24, 28}, leftOfIt{1868, 0, 24, 28};

    /// Whether nothing is drawn on the panel there: each row is of one colour.
    bool isBare(const Rect& area) const {
        const auto pixels = m_server.screenshot(area);
        for (std::size_t i = 1; i < pixels.size(); ++i)
            if (i % static_cast<std::size_t>(area.width) != 0 && pixels[i] != pixels[i - 1])
                return false;
        return true;
    }

    const XServer& m_server;
};
