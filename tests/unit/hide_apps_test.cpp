#include "support/machines/Launch.h"

#include "platform/simulated/applications/SimulatedRunningApplication.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

using HideAppsTest = SimulatedMacTest;

TEST_F(HideAppsTest, HidesEverythingWhenNothingIsInFront) {
    openWindow("Editor");
    Process process(mac);
    HideApps::rememberFrontmost();
    mac.workspace().userActivatesNothing();
    HideApps::hideOthers();
    HideApps::showAll();
    EXPECT_EQ(mac.journal().lines("runningApplication"),
              (Lines{"runningApplication.hide Dock", "runningApplication.hide Editor",
                     "runningApplication.unhide Dock", "runningApplication.unhide Editor"}));
}

TEST_F(HideAppsTest, RemembersTheFrontmostApplicationUntilTheProcessEnds) {
    const auto remembered = [] {
        return std::dynamic_pointer_cast<SimulatedRunningApplication>(HideApps::lastActiveApp())->id();
    };
    {
        const Launch launch(mac);
        const auto editor = openWindow("Editor");
        const auto browser = openWindow("Browser");
        EXPECT_EQ(remembered(), owner(browser));
        mac.workspace().quit(owner(browser));
        mac.mainQueue().runUntilIdle();
        EXPECT_EQ(remembered(), owner(editor));
    }
    Process process(mac);
    EXPECT_EQ(HideApps::lastActiveApp(), nullptr);
}

} // namespace
} // namespace tavro
