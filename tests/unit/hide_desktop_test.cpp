#include "support/machines/Launch.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tavro {
namespace {

TEST_F(SimulatedMacTest, CoversStayOnTheirScreensUntilRemoved) {
    const auto coverCount = [this] {
        return std::ranges::count(mac.windowServer().windows(), ApplicationID::self, &ServerWindow::owner);
    };
    Process process{mac};
    auto& hideDesktop = HideDesktop::shared();
    hideDesktop.coverScreens(true);
    EXPECT_EQ(hideDesktop.managedWindows.back().displayID, DisplayID(2));
    const std::weak_ptr<Window> first = hideDesktop.managedWindows.front().window;
    mac.screens().set({SimulatedScreens::screen({{0, 0}, {800, 600}}, 3)});
    hideDesktop.coverScreens(std::nullopt); // once more, which stacks
    EXPECT_EQ(hideDesktop.changeWallpaper, std::nullopt);
    EXPECT_EQ(coverCount(), 3);
    EXPECT_EQ(mac.windowServer().find(*hideDesktop.managedWindows.front().windowNumber)->frame,
              (Rect{{0, 0}, {1920, 1080}}));
    hideDesktop.removeCovers();
    EXPECT_TRUE(hideDesktop.managedWindows.empty());
    EXPECT_EQ(coverCount(), 0);
    EXPECT_TRUE(first.expired());
}

} // namespace
} // namespace tavro
