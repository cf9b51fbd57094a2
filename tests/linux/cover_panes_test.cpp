#include "platform/linux/windows/CoverPanes.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

constexpr xcb_window_t rootWindow = 1, icons = 10, otherIcons = 11;
const QRect left(0, 0, 1920, 1080), right(1920, 0, 1440, 900), all(0, 0, 3360, 1080);
const DesktopWindow root{rootWindow, 24, all};

TEST(CoverPanesTest, HideTheIconsOfEveryDesktopWindow) {
    const CoverPane bare{rootWindow, 24, right, {}};
    const std::tuple<const char*, std::vector<DesktopWindow>, std::vector<CoverPane>> cases[] = {
        {"none", {}, {bare}},
        {"one for all screens", {{icons, 24, all}}, {{icons, 24, right, {}}}},
        {"one for each screen",
         {{icons, 24, left}, {otherIcons, 32, right}},
         {{otherIcons, 32, {0, 0, 1440, 900}, {}}}},
        {"one of another screen only", {{icons, 24, left}}, {bare}},
        {"one above the other",
         {{icons, 24, all}, {otherIcons, 32, right}},
         {{icons, 24, right, {}}, {otherIcons, 32, {0, 0, 1440, 900}, {}}}},
        {"one beside a panel",
         {{icons, 24, {1920, 30, 1440, 870}}},
         {{icons, 24, {0, 0, 1440, 870}, {0, 30}}}},
        {"one that is larger",
         {{icons, 24, {1900, -10, 2000, 2000}}},
         {{icons, 24, {20, 10, 1440, 900}, {}}}},
    };
    for (const auto& [what, desktopWindows, expected] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(panesOf(right, desktopWindows, root), expected);
    }
}

} // namespace
} // namespace tavro
