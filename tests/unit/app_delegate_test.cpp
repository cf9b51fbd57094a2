#include "support/machines/Launch.h"

#include "platform/windows/Popover.h"
#include "settings/Constants.h"

#include <algorithm>

namespace tavro {
namespace {

using AppDelegateTest = SimulatedMacTest;

TEST_F(AppDelegateTest, LaunchRunsItsStepsInOrder) {
    Launch launch(mac);
    auto lines = mac.journal().lines();
    // The settings write their options over and over, the first one first.
    const auto isOfSettings = [](const auto& line) {
        return line.starts_with("userDefaults.setObject") &&
               !line.starts_with("userDefaults.setObject tavro") &&
               !line.starts_with("userDefaults.setObject KeyboardShortcuts");
    };
    const auto ofSettings = std::ranges::find_if(lines, isOfSettings);
    ASSERT_NE(ofSettings, lines.end());
    lines.erase(std::remove_if(ofSettings + 1, lines.end(), isOfSettings), lines.end());
    EXPECT_EQ(joined(lines),
              "application.activate true; userDefaults.setObject tavro false; "
              "userDefaults.setObject hideDesktop true; "
              "popover.setContentSize 340 400; popover.setBehavior 1; popover.setAnimates false; "
              "statusBar.statusItem -1; statusBarButton.sendActionOn 20; "
              "statusBarButton.setImage menubar-off; statusItem.announceMenu Status Bar Menu; "
              "accessibility.isProcessTrusted true; appService.register; "
              "userDefaults.setObject KeyboardShortcuts_tavroMuteShortcut "
              "\"{\"carbonModifiers\":768,\"carbonKeyCode\":46}\"; "
              "hotKeyCenter.registerEventHotKey 46 768 1515276363 1; "
              "hotKeyCenter.installEventHandler 2; "
              "urlSession.dataTask https://updates.vantrelo.example/releases/version.json; popover.show "
              "28x22 at 0,0 1; popover.makeKey");
}

TEST_F(AppDelegateTest, ClickActsOnButtonAndModifiers) {
    using namespace EventModifierFlags;
    enum Meaning { popover, menu, presentationMode };
    const std::tuple<EventType, unsigned, Meaning> cases[] = {
        {EventType::leftMouseUp, shift | command, popover},
        {EventType::leftMouseUp, control, menu},
        {EventType::leftMouseUp, option | control | shift, presentationMode},
        {EventType::rightMouseUp, 0, menu},
        {EventType::rightMouseUp, option, presentationMode},
    };
    for (const auto& [type, modifierFlags, meaning] : cases) {
        SCOPED_TRACE(modifierFlags);
        Launch launch(mac);
        launch.click(type, modifierFlags);
        EXPECT_EQ(mac.statusBar().openMenu(), meaning == menu ? launch.delegate.statusBarMenu : nullptr);
        EXPECT_EQ(UserSettings::shared().tavroIsOn(), meaning == presentationMode);
        EXPECT_EQ(launch.shownImage(), meaning == presentationMode ? "menubar-on" : "menubar-off");
        EXPECT_EQ(launch.delegate.popover->isShown(), meaning != popover); // it shows from the launch on
    }
}

TEST_F(AppDelegateTest, ShortcutsWorkInAnyApplication) {
    constexpr SimulatedHotKeyCenter::Combination mute{46, cmdKey | shiftKey}, toggle{35, cmdKey};
    const auto microphone = mac.audioHardware().deviceWithUID("uid of Built-in Microphone");
    mac.userDefaults().setObject("KeyboardShortcuts_tavroGlobalShortcut",
                                 R"({"carbonKeyCode":35,"carbonModifiers":256})");
    {
        Launch launch(mac);
        openWindow("Editor");
        EXPECT_EQ(mac.log().printed(), Lines{"resign active"});
        mac.hotKeyCenter().type(mute); // in force in the very first run
        EXPECT_EQ(mac.audioHardware().isMuted(microphone), true);
        for (const auto* image : {"menubar-on", "menubar-off"}) {
            mac.hotKeyCenter().type(toggle);
            EXPECT_EQ(launch.shownImage(), image);
        }
        EXPECT_FALSE(launch.delegate.popover->isShown());
        for (int time = 0; time < 2; ++time) {
            mac.application().reopen();
            EXPECT_EQ(mac.workspace().frontmost(), ApplicationID::self);
            EXPECT_TRUE(launch.delegate.popover->isShown());
        }
    }
    mac.userDefaults().setObject("KeyboardShortcuts_tavroMuteShortcut", false); // the user has cleared it
    Launch launch(mac);
    EXPECT_EQ(mac.hotKeyCenter().registered(), std::vector{toggle});
}

TEST_F(AppDelegateTest, OtherProgramsDriveItByNameAndWatchWhatComesOfIt) {
    Launch launch(mac);
    auto& actions = mac.actions();
    std::string seen;
    std::vector<Observation> watches;
    for (const std::string name : {"presentation-mode", "microphone"})
        watches.push_back(
            actions.watch(name, [&seen, name](bool isOn) { seen += name + (isOn ? "+" : "-"); }));
    const auto microphone = mac.audioHardware().deviceWithUID("uid of Built-in Microphone");
    const std::tuple<std::string, std::optional<bool>, std::string> cases[] = {
        {"toggle-presentation-mode", {}, "presentation-mode+"},
        {"presentation-mode", true, ""},
        {"microphone", false, "microphone-"},
        {"presentation-mode", {}, "presentation-mode-microphone+"},
        {"toggle-microphone", {}, "microphone-"},
        {"microphone", {}, "microphone+"},
        {"preferences", {}, ""},
    };
    for (const auto& [name, value, expected] : cases) {
        SCOPED_TRACE(name);
        seen.clear();
        EXPECT_TRUE(value ? actions.setState(name, *value) : actions.activate(name));
        mac.mainQueue().runUntilIdle();
        EXPECT_EQ(seen, expected);
        EXPECT_EQ(actions.state("presentation-mode"), UserSettings::shared().tavroIsOn());
        EXPECT_EQ(actions.state("microphone"), !mac.audioHardware().isMuted(microphone).value());
    }
    EXPECT_TRUE(launch.delegate.preferenceView);
    seen.clear();
    const auto second = mac.audioHardware().plugIn(SimulatedAudioHardware::microphone("Second"));
    mac.audioHardware().unplug(microphone);
    mac.mainQueue().runUntilIdle();
    mac.audioHardware().otherProgramSetsMute(second, true);
    mac.mainQueue().runUntilIdle();
    EXPECT_EQ(seen, "microphone-");
    EXPECT_FALSE(actions.activate("nonsense"));
    EXPECT_TRUE(actions.activate("quit"));
    mac.mainQueue().runUntilIdle();
    EXPECT_EQ(mac.application().exitStatus(), 0);
}

TEST_F(AppDelegateTest, MenuIsAttachedOnlyWhileOpen) {
    Launch launch(mac);
    mac.journal().clear();
    launch.click(EventType::rightMouseUp);
    EXPECT_EQ(mac.journal().lines(),
              (Lines{"statusItem.setMenu Status Bar Menu", "statusBarButton.popUp Status Bar Menu 0,24"}));
    ASSERT_TRUE(mac.statusBar().choose("Preferences"));
    EXPECT_TRUE(launch.delegate.preferenceView);
    EXPECT_EQ(launch.item().menu(), nullptr);
}

TEST_F(AppDelegateTest, QuitEndsAtOnceAndTheNextRunPutsRightWhatItLeft) {
    mac.addNotificationSwitch();
    const auto editor = openWindow("Editor");
    const auto away = openWindow("Mail");
    mac.workspace().userHides(owner(away));
    constexpr AudioObjectID speaker = 42; // the built-in one
    const auto toggleAndQuit = [&] {
        Launch launch(mac);
        for (std::size_t option = 0; option < 4; ++option)
            UserSettings::shared().setOptionIsOn(option, true);
        openWindow("Browser");
        launch.switchPresentationMode();
        mac.mainQueue().runUntilIdle();
        EXPECT_EQ(mac.audioHardware().isMuted(speaker), true);
        launch.click(EventType::rightMouseUp);
        ASSERT_TRUE(mac.statusBar().choose("Quit"));
        EXPECT_EQ(mac.application().exitStatus(), 0);
    };
    toggleAndQuit();
    EXPECT_EQ(mac.journal().lines("log.print Turn"), Lines{"log.print Turn On --------------"});
    EXPECT_TRUE(mac.userDefaults().boolForKey("tavro"));
    const auto next = mac.audioHardware().plugIn(SimulatedAudioHardware::speaker("Next"));
    mac.audioHardware().setDefaultOutput(next);
    mac.audioHardware().otherProgramSetsMute(next, true); // which is the user's affair
    const Launch launch(mac);
    mac.mainQueue().runUntilIdle();
    EXPECT_FALSE(UserSettings::shared().tavroIsOn());
    EXPECT_TRUE(isVisible(editor));
    EXPECT_FALSE(isVisible(away));
    EXPECT_FALSE(mac.notificationSilencing()->state);
    EXPECT_EQ(mac.audioHardware().isMuted(speaker), false);
    EXPECT_EQ(mac.audioHardware().isMuted(next), true);
    EXPECT_EQ(mac.userDefaults().object("speakerFromTavro"), std::nullopt);
}

TEST_F(AppDelegateTest, TerminationTurnsPresentationModeOffOnce) {
    Launch launch(mac);
    launch.switchPresentationMode();
    mac.journal().clear();
    mac.application().terminate();
    mac.application().terminate();
    EXPECT_EQ(mac.accessibility().announced, (Lines{"Presentation mode is on", "Presentation mode is off"}));
    EXPECT_EQ(mac.journal().lines("log.print Turn"), Lines{"log.print Turn Off --------------"});
    EXPECT_EQ(mac.journal().lines("window.close").size(), 2u);
    EXPECT_EQ(mac.application().exitStatus(), 0);
    EXPECT_EQ(mac.userDefaults().object("tavro"), PropertyList(false));
}

TEST_F(AppDelegateTest, LaunchAsksForAccessibilityFromVersion11On) {
    for (const SystemVersion version : {SystemVersion{10, 15}, {11, 0}}) {
        SimulatedMac other(version);
        const Launch launch(other);
        EXPECT_EQ(other.journal().lines("accessibility").size(), version.major < 11 ? 0u : 1u);
    }
}

TEST_F(AppDelegateTest, RunsWithoutAStatusItemButton) {
    mac.statusBar().failButtons = true;
    Launch launch(mac);
    launch.switchPresentationMode();
    EXPECT_FALSE(UserSettings::shared().tavroIsOn());
    UserSettings::shared().setTavroIsOn(true);
    mac.application().terminate();
    EXPECT_EQ(mac.journal().lines("log.print Turn"), Lines{"log.print Turn Off --------------"});
}

} // namespace
} // namespace tavro
