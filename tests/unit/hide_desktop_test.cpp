#include "support/Launch.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tavro {
namespace {

class HideDesktopTest : public SimulatedMacTest {
protected:
    auto coverCount() {
        return std::ranges::count(mac.windowServer().windows(), ApplicationID::self, &ServerWindow::owner);
    }

    Process process{mac};
    HideDesktop& hideDesktop = HideDesktop::shared();
};

TEST_F(HideDesktopTest, CoversEachScreenUntilRemoved) {
    hideDesktop.coverScreens(false);
    ASSERT_EQ(hideDesktop.managedWindows.size(), 2u);
    EXPECT_EQ(hideDesktop.managedWindows.front().displayID, DisplayID(1));
    EXPECT_EQ(hideDesktop.managedWindows.back().displayID, DisplayID(2));
    const std::weak_ptr<Window> window = hideDesktop.managedWindows.front().window;
    EXPECT_EQ(coverCount(), 2);
    hideDesktop.removeCovers();
    EXPECT_TRUE(hideDesktop.managedWindows.empty());
    EXPECT_EQ(coverCount(), 0);
    EXPECT_TRUE(window.expired());
}

TEST_F(HideDesktopTest, CoveringTwiceStacksAndIgnoresScreenChanges) {
    hideDesktop.coverScreens(true);
    mac.screens().set({SimulatedScreens::screen({{0, 0}, {800, 600}}, 3)});
    hideDesktop.coverScreens(std::nullopt);
    EXPECT_EQ(hideDesktop.changeWallpaper, std::nullopt);
    EXPECT_EQ(coverCount(), 3);
    EXPECT_EQ(mac.windowServer().find(*hideDesktop.managedWindows.front().windowNumber)->frame,
              (Rect{{0, 0}, {1920, 1080}}));
    hideDesktop.removeCovers();
    EXPECT_EQ(coverCount(), 0);
}

} // namespace
} // namespace tavro
