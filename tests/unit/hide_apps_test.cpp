#include "support/Launch.h"

#include "platform/simulated/applications/SimulatedRunningApplication.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

using HideAppsTest = SimulatedMacTest;

TEST_F(HideAppsTest, HidesEverythingWhenNothingIsInFront) {
    openWindow("Editor");
    Process process(mac);
    mac.workspace().userActivatesNothing();
    HideApps::hideOthers();
    HideApps::showAll();
    EXPECT_EQ(mac.journal().lines("runningApplication"),
              (Lines{"runningApplication.hide Dock", "runningApplication.hide Editor",
                     "runningApplication.unhide Dock", "runningApplication.unhide Editor"}));
}

TEST_F(HideAppsTest, HidesAllButTheFrontmostAndShowsEverything) {
    const auto mail = openWindow("Mail");
    const auto editor = openWindow("Editor");
    const auto browser = openWindow("Browser");
    mac.workspace().userHides(owner(mail));
    Process process(mac);
    mac.workspace().clickWindow(browser);
    HideApps::hideOthers();
    EXPECT_EQ(mac.journal().lines("runningApplication"),
              (Lines{"runningApplication.hide Dock", "runningApplication.hide Mail",
                     "runningApplication.hide Editor"}));
    mac.workspace().userActivates(owner(editor));
    HideApps::showAll();
    for (const auto window : {mail, editor, browser})
        EXPECT_TRUE(isVisible(window));
    EXPECT_EQ(mac.workspace().frontmost(), owner(editor));
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
