#include "support/machines/Launch.h"

#include "app/CoreTavro.h"
#include "platform/simulated/applications/SimulatedRunningApplication.h"

#include <algorithm>

namespace tavro {
namespace {

class CoreTavroTest : public SimulatedMacTest {
protected:
    /// The journal of one switch, ended by what an observer of the notification writes into it; without
    /// the configuration of each cover and the events of the clicks.
    Lines journalOfSwitch() {
        const auto observation = Process::current().notificationCenter().addObserver(
            "TavroToogle", [&] { mac.journal().record("TavroToogle"); });
        mac.journal().clear();
        auto& settings = UserSettings::shared();
        settings.setTavroIsOn(!settings.tavroIsOn());
        CoreTavro().toggle();
        mac.mainQueue().runUntilIdle();
        auto lines = mac.journal().lines();
        std::erase_if(lines, [](const auto& line) {
            return (line.starts_with("window.") && !line.starts_with("window.close")) ||
                   line.starts_with("mouseEvents.");
        });
        return lines;
    }
};

constexpr AudioObjectID speaker = 42; // the built-in one
const std::string unmute = "audioHardware.setPropertyData 41 mute inpt 0; ";
// The built-in microphone is listened to as the default device and as one of all.
const std::string presentButtonAndObserve =
    "controlStrip.showsCloseBoxWhenFrontMost false; controlStrip.addSystemTrayItem tesk.startItem; "
    "controlStrip.setPresence tesk.startItem true; audioHardware.addPropertyListener 41 mute inpt; "
    "audioHardware.addPropertyListener 41 mute inpt; ";
const std::string removeButtonAndObservation = "controlStrip.removeSystemTrayItem tesk.startItem; "
                                               "audioHardware.removePropertyListener 41 mute inpt; "
                                               "audioHardware.removePropertyListener 41 mute inpt; ";

TEST_F(CoreTavroTest, FeaturesRunInTheOrderOfTheOptionsBeforeTheNotification) {
    const Launch launch(mac);
    openWindow("Editor");
    openWindow("Browser");
    auto options = UserSettings::shared().options();
    std::ranges::reverse(options);
    for (auto& option : options) // also the wallpaper, which is no feature of its own
        option.isOn = true;
    UserSettings::shared().setOptions(options);
    EXPECT_EQ(joined(journalOfSwitch()),
              "userDefaults.setObject tavro true; log.print Turn On --------------; "
              "userDefaults.setObject speakerFromTavro \"uid of Built-in Speaker\"; "
              "audioHardware.setPropertyData 42 mute outp 1; runningApplication.hide Dock; "
              "runningApplication.hide TavroPRO; runningApplication.hide Editor; log.print ENABLE; "
              "log.print isEnabled false; log.print DNDfromTavro false; "
              "userDefaults.setObject DNDfromTavro true; accessibility.isProcessTrusted true; "
              "clock.wait 0.1; windowServer.createWindow 7 1920x1080 at 0,0 1 2 false; "
              "windowServer.createWindow 8 1440x900 at 1920,180 1 2 false; " +
                  presentButtonAndObserve + "statusBarButton.setImage menubar-on; TavroToogle");
    EXPECT_EQ(HideDesktop::shared().changeWallpaper, true);
    EXPECT_EQ(
        joined(journalOfSwitch()),
        "userDefaults.setObject tavro false; log.print Turn Off --------------; " + unmute +
            "audioHardware.setPropertyData 42 mute outp 0; userDefaults.removeObject speakerFromTavro; " +
            unmute +
            "runningApplication.unhide Dock; runningApplication.unhide TavroPRO; "
            "runningApplication.unhide Editor; runningApplication.unhide Browser; "
            "runningApplication.activate Browser 2; " +
            unmute +
            "log.print DISABLE; log.print isEnabled true; log.print DNDfromTavro true; "
            "clock.wait 0.1; userDefaults.setObject DNDfromTavro false; " +
            unmute + "window.close 7; window.close 8; " + unmute + removeButtonAndObservation +
            "statusBarButton.setImage menubar-off; TavroToogle");
}

TEST_F(CoreTavroTest, EachSwitchUsesTheOptionsOfThatMoment) {
    for (const bool isOnBefore : {false, true}) {
        SCOPED_TRACE(isOnBefore);
        const Launch launch(mac);
        const auto editor = openWindow("Editor");
        openWindow("Browser");
        const auto setOptions = [](bool areOn) {
            for (std::size_t option = 0; option < 4; ++option) // without the wallpaper
                UserSettings::shared().setOptionIsOn(option, areOn);
        };
        mac.audioHardware().otherProgramSetsMute(speaker, false);
        setOptions(isOnBefore);
        journalOfSwitch();
        EXPECT_EQ(HideDesktop::shared().managedWindows.size(), isOnBefore ? 2u : 0u);
        EXPECT_EQ(mac.systemNotificationCenter().isSilent(), isOnBefore);
        EXPECT_EQ(isVisible(editor), !isOnBefore);
        EXPECT_EQ(mac.workspace().isHiding(), isOnBefore);
        EXPECT_EQ(mac.audioHardware().isMuted(speaker), isOnBefore);
        mac.workspace().userHides(owner(editor));
        mac.audioHardware().otherProgramSetsMute(speaker, true);
        setOptions(!isOnBefore);
        journalOfSwitch();
        EXPECT_TRUE(HideDesktop::shared().managedWindows.empty()); // in any case
        EXPECT_EQ(mac.systemNotificationCenter().isSilent(), isOnBefore);
        EXPECT_FALSE(mac.workspace().isHiding());
        EXPECT_EQ(isVisible(editor), !isOnBefore);
        EXPECT_EQ(mac.audioHardware().isMuted(speaker), isOnBefore);
    }
}

TEST_F(CoreTavroTest, TheScreensStayAwakeUnlessTheSettingsSayOtherwise) {
    for (const std::optional<bool> setting :
         {std::optional<bool>(), std::optional(true), std::optional(false)}) {
        const Launch launch(mac);
        if (setting)
            mac.userDefaults().setObject("keepAwake", *setting);
        journalOfSwitch();
        EXPECT_EQ(mac.displaySleep().isPrevented, setting.value_or(true));
        journalOfSwitch();
        EXPECT_FALSE(mac.displaySleep().isPrevented);
    }
}

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
