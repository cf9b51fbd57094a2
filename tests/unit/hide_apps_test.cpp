#include "support/Launch.h"

#include "platform/simulated/applications/SimulatedRunningApplication.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

class HideAppsTest : public SimulatedMacTest {
protected:
    static std::optional<ApplicationID> remembered() {
        const auto application =
            std::dynamic_pointer_cast<SimulatedRunningApplication>(HideApps::lastActiveApp());
        return application ? std::optional(application->id()) : std::nullopt;
    }
};

TEST_F(HideAppsTest, HidesEverythingWhenNothingIsInFront) {
    openWindow("Editor");
    Process process(mac);
    HideApps::rememberFrontmost();
    mac.workspace().userActivatesNothing();
    HideApps::hideOthers();
    HideApps::showAll();
    EXPECT_EQ(HideApps::lastActiveApp(), nullptr);
    EXPECT_EQ(mac.journal().lines("runningApplication"),
              (Lines{"runningApplication.hide Dock", "runningApplication.hide Editor",
                     "runningApplication.unhide Dock", "runningApplication.unhide Editor"}));
}

TEST_F(HideAppsTest, HidesAllButTheFrontmostAndShowsEverything) {
    const auto hiddenByUser = openWindow("Mail");
    const auto editor = openWindow("Editor");
    const auto browser = openWindow("Browser");
    const auto chat = openWindow("Chat");
    mac.workspace().userHides(owner(hiddenByUser));
    Process process(mac);
    mac.workspace().clickWindow(browser);
    HideApps::hideOthers();
    EXPECT_EQ(mac.journal().lines("runningApplication"),
              (Lines{"runningApplication.hide Dock", "runningApplication.hide Mail",
                     "runningApplication.hide Editor", "runningApplication.hide Chat"}));
    mac.workspace().userActivates(owner(editor));
    mac.journal().clear();
    HideApps::showAll();
    EXPECT_EQ(mac.journal().lines("runningApplication"),
              (Lines{"runningApplication.unhide Dock", "runningApplication.unhide Mail",
                     "runningApplication.unhide Editor", "runningApplication.unhide Browser",
                     "runningApplication.unhide Chat", "runningApplication.activate Editor 2"}));
    for (const auto window : {hiddenByUser, editor, browser, chat})
        EXPECT_TRUE(isVisible(window));
    EXPECT_EQ(mac.workspace().frontmost(), owner(editor));
}

TEST_F(HideAppsTest, RemembersTheFrontmostApplicationUntilTheProcessEnds) {
    {
        const Launch launch(mac);
        const auto editor = openWindow("Editor");
        EXPECT_EQ(remembered(), owner(editor));
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
