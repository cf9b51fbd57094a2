#include "Pictures.h"

#include <algorithm>
#include <map>

Rect wholeArea(const XClient& server) {
    Rect area;
    for (const auto& screen : server.screens())
        area = {0, 0, std::max(area.width, screen.x + screen.width),
                std::max(area.height, screen.y + screen.height)};
    return area;
}

Pixels stillPicture(XServer& server) {
    Pixels shown;
    int same = 0;
    EXPECT_TRUE(server.eventually("a moment without any drawing", [&] {
        auto next = server.screenshot(wholeArea(server));
        same = next == shown ? same + 1 : 0;
        shown = std::move(next);
        return same == 3;
    }));
    return shown;
}

bool differ(std::uint32_t one, std::uint32_t other, int most) {
    for (const int shift : {0, 8, 16})
        if (std::abs(static_cast<int>(one >> shift & 255) - static_cast<int>(other >> shift & 255)) > most)
            return true;
    return false;
}

Rect changed(const XClient& server, const Pixels& before, const Rect& area, bool inside) {
    const auto whole = wholeArea(server);
    const auto now = server.screenshot(whole);
    int left = whole.width, top = whole.height, right = -1, bottom = -1;
    std::size_t i = 0;
    for (int y = 0; y < whole.height; ++y)
        for (int x = 0; x < whole.width; ++x, ++i)
            if (now[i] != before[i] && area.contains({x, y}) == inside) {
                left = std::min(left, x), right = std::max(right, x);
                top = std::min(top, y), bottom = std::max(bottom, y);
            }
    return {left, top, std::max(0, right + 1 - left), std::max(0, bottom + 1 - top)};
}

bool showsGround(const Pixels& pixels, bool isDark) {
    std::map<std::uint32_t, std::size_t> counts;
    for (const auto pixel : pixels)
        ++counts[pixel];
    const auto& [color, count] =
        *std::ranges::max_element(counts, {}, [](auto& each) { return each.second; });
    constexpr std::uint32_t middle = 3 * 128;
    const bool isColorDark = (color >> 16 & 255) + (color >> 8 & 255) + (color & 255) < middle;
    return count > pixels.size() / 2 && count < pixels.size() && isColorDark == isDark;
}
