#include "platform/linux/windows/PanelGeometry.h"

#include <gtest/gtest.h>

namespace tavro {

void PrintTo(const QPoint& point, std::ostream* stream) {
    *stream << point.x() << "," << point.y();
}

void PrintTo(const QRect& rect, std::ostream* stream) {
    *stream << rect.width() << "x" << rect.height() << "+" << rect.x() << "+" << rect.y();
}

namespace {

constexpr QRect first{0, 0, 1920, 1080}, second{1920, 0, 1440, 900};
constexpr QSize size{340, 400};

std::vector<ScreenWithPanels> screensWith(const QRect& panel) {
    return {{first, first.contains(panel) ? std::vector{panel} : std::vector<QRect>()},
            {second, second.contains(panel) ? std::vector{panel} : std::vector<QRect>()}};
}

TEST(PanelGeometry, PopupsOpenBesideThePanelAndStayOnItsScreen) {
    const std::tuple<const char*, QRect, QPoint, QRect> cases[] = {
        {"top", {0, 0, 1920, 29}, {1000, 14}, {830, 29, 340, 400}},
        {"top, at its end", {0, 0, 1920, 29}, {1908, 14}, {1580, 29, 340, 400}},
        {"top, at its beginning", {0, 0, 1920, 29}, {5, 14}, {0, 29, 340, 400}},
        {"bottom", {0, 1051, 1920, 29}, {1908, 1066}, {1580, 651, 340, 400}},
        {"right, its upper half", {1891, 0, 29, 500}, {1906, 240}, {1551, 40, 340, 400}},
        {"right of the second", {3331, 0, 29, 900}, {3346, 886}, {2991, 500, 340, 400}},
        {"a panel that leaves little room", {0, 0, 1920, 800}, {1000, 700}, {830, 800, 340, 280}},
        {"away from the panel", {0, 0, 1920, 29}, {1000, 500}, {1000, 500, 340, 400}},
        {"away, near a corner", {0, 0, 1920, 29}, {1900, 1000}, {1580, 680, 340, 400}},
        {"on no screen", {0, 0, 1920, 29}, {2000, 1000}, {2000, 1000, 340, 400}},
    };
    for (const auto& [where, panel, point, expected] : cases)
        EXPECT_EQ(besidePanel(screensWith(panel), point, size), expected) << where;
}

TEST(PanelGeometry, TheTrayIsUnderThePointerOrAtTheEndOfAPanel) {
    const QPoint elsewhere{900, 500};
    const std::tuple<const char*, std::vector<ScreenWithPanels>, QPoint, QPoint> cases[] = {
        {"under the pointer", screensWith({0, 0, 1920, 29}), {1300, 10}, {1300, 10}},
        {"top", screensWith({0, 0, 1920, 29}), elsewhere, {1905, 14}},
        {"left", screensWith({0, 0, 29, 1080}), elsewhere, {14, 1065}},
        {"on the second", screensWith({1920, 871, 1440, 29}), elsewhere, {3345, 885}},
        {"on both",
         {{first, {{0, 1051, 1920, 29}}}, {second, {{1920, 0, 1440, 29}}}},
         elsewhere,
         {1905, 1065}},
        {"no panel", {{first, {}}, {second, {}}}, elsewhere, {1919, 0}},
        {"no screen", {}, elsewhere, {0, 0}},
    };
    for (const auto& [what, screens, pointer, expected] : cases)
        EXPECT_EQ(trayPlace(screens, pointer), expected) << what;
}

TEST(PanelGeometry, PanelsAreTheStripsOutsideTheWorkArea) {
    const QRect screen(100, 0, 1920, 1080);
    const std::pair<QRect, std::vector<QRect>> cases[] = {
        {screen, {}},
        {{100, 32, 1920, 1048}, {{100, 0, 1920, 32}}},
        {{100, 0, 1920, 1040}, {{100, 1040, 1920, 40}}},
        {{164, 0, 1806, 1080}, {{100, 0, 64, 1080}, {1970, 0, 50, 1080}}},
    };
    for (const auto& [workArea, expected] : cases)
        EXPECT_EQ(stripsAround(workArea, screen), expected);
}

TEST(PanelGeometry, PixelsBecomePointsOfTheScreen) {
    const std::tuple<QRect, QRect, double, QRect> cases[] = {
        {{0, 0, 1920, 29}, first, 1, {0, 0, 1920, 29}},
        {{0, 0, 1920, 29}, second, 1, {}},
        {{0, 0, 1920, 58}, {0, 0, 960, 540}, 2, {0, 0, 960, 29}},
        {{1920, 842, 1440, 58}, {1920, 0, 720, 450}, 2, {1920, 421, 720, 29}},
        {{0, -20, 1920, 29}, first, 1, {0, 0, 1920, 9}},
    };
    for (const auto& [pixels, screen, scale, expected] : cases) {
        const auto part = partOfScreen(pixels, screen, scale);
        EXPECT_EQ(part.isEmpty() ? QRect() : part, expected);
    }
}

} // namespace
} // namespace tavro
