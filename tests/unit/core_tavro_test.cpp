#include "support/Launch.h"

#include "app/CoreTavro.h"

#include <gtest/gtest.h>

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
    static void setOption(const std::string& id, bool isOn) {
        auto options = UserSettings::shared().options();
        std::ranges::find(options, id, &OptionItem::id)->isOn = isOn;
        UserSettings::shared().setOptions(options);
    }
};

constexpr AudioObjectID microphone = 41; // the built-in ones
constexpr AudioObjectID speaker = 42;
const char* const unmute = "audioHardware.setPropertyData 41 mute inpt 0";
const Lines presentButtonAndObserve{
    "controlStrip.showsCloseBoxWhenFrontMost false",  "controlStrip.addSystemTrayItem tesk.startItem",
    "controlStrip.setPresence tesk.startItem true",
    "audioHardware.addPropertyListener 41 mute inpt", // as the default device
    "audioHardware.addPropertyListener 41 mute inpt", // as one of all
};
const Lines removeButtonAndObservation{
    "controlStrip.removeSystemTrayItem tesk.startItem",
    "audioHardware.removePropertyListener 41 mute inpt",
    "audioHardware.removePropertyListener 41 mute inpt",
};

Lines joined(const std::vector<Lines>& parts) {
    Lines all;
    for (const auto& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

TEST_F(CoreTavroTest, FeaturesFollowTheCatalogueAndTheNotificationComesLast) {
    const Launch launch(mac);
    openWindow("Editor");
    openWindow("Browser");
    setOption("muteSpeaker", true);
    EXPECT_EQ(journalOfSwitch(), joined({{
                                             "userDefaults.setObject tavro true",
                                             "log.print Turn On --------------",
                                             "windowServer.createWindow 7 1920x1080 at 0,0 1 2 false",
                                             "windowServer.createWindow 8 1440x900 at 1920,180 1 2 false",
                                             "log.print ENABLE",
                                             "log.print isEnabled false",
                                             "log.print DNDfromTavro false",
                                             "userDefaults.setObject DNDfromTavro true",
                                             "accessibility.isProcessTrusted true",
                                             "clock.wait 0.1",
                                             "runningApplication.hide Dock",
                                             "runningApplication.hide TavroPRO",
                                             "runningApplication.hide Editor",
                                             "audioHardware.setPropertyData 42 mute outp 1",
                                         },
                                         presentButtonAndObserve,
                                         {"statusBarButton.setImage menubar-on", "TavroToogle"}}));
    EXPECT_EQ(journalOfSwitch(), joined({{
                                             "userDefaults.setObject tavro false",
                                             "log.print Turn Off --------------",
                                             "window.close 7",
                                             "window.close 8",
                                             unmute,
                                             "log.print DISABLE",
                                             "log.print isEnabled true",
                                             "log.print DNDfromTavro true",
                                             "clock.wait 0.1",
                                             "userDefaults.setObject DNDfromTavro false",
                                             unmute,
                                             "runningApplication.unhide Dock",
                                             "runningApplication.unhide TavroPRO",
                                             "runningApplication.unhide Editor",
                                             "runningApplication.unhide Browser",
                                             "runningApplication.activate Browser 2",
                                             unmute,
                                             "audioHardware.setPropertyData 42 mute outp 0",
                                             unmute,
                                             unmute,
                                         },
                                         removeButtonAndObservation,
                                         {"statusBarButton.setImage menubar-off", "TavroToogle"}}));
}

TEST_F(CoreTavroTest, TheOrderOfTheOptionsIsTheOrderOfTheFeatures) {
    const Launch launch(mac);
    mac.screens().set({SimulatedScreens::screen({{0, 0}, {800, 600}}, 1)});
    auto options = UserSettings::shared().options();
    std::ranges::reverse(options);
    UserSettings::shared().setOptions(options);
    const auto lines = journalOfSwitch();
    const auto position = [&](const std::string& beginning) {
        return std::ranges::find_if(lines, [&](const auto& line) { return line.starts_with(beginning); });
    };
    EXPECT_LT(position("runningApplication.hide"), position("windowServer.createWindow"));
    EXPECT_NE(position("windowServer.createWindow"), lines.end());
}

TEST_F(CoreTavroTest, SwitchedOffFeaturesTakeNoPart) {
    for (const bool hasOptions : {true, false}) {
        SCOPED_TRACE(hasOptions);
        const Launch launch(mac);
        openWindow("Editor");
        auto options = UserSettings::shared().options();
        std::ranges::for_each(options, [](auto& option) { option.isOn = false; });
        UserSettings::shared().setOptions(hasOptions ? options : std::vector<OptionItem>{});
        EXPECT_EQ(journalOfSwitch(),
                  joined({{"userDefaults.setObject tavro true", "log.print Turn On --------------"},
                          presentButtonAndObserve,
                          {"statusBarButton.setImage menubar-on", "TavroToogle"}}));
        EXPECT_EQ(journalOfSwitch(),
                  joined({{"userDefaults.setObject tavro false", "log.print Turn Off --------------"},
                          Lines(hasOptions ? 5 : 0, unmute), // once for each option, on or off
                          removeButtonAndObservation,
                          {"statusBarButton.setImage menubar-off", "TavroToogle"}}));
    }
}

TEST_F(CoreTavroTest, OptionsThatChangeMeanwhileCountAsTheyAreAtTheEnd) {
    const struct {
        const char* what;
        std::size_t index;
        bool before;
        std::size_t coversWhileOn;
        bool isVisibleWhileOn;
        bool isVisibleAfter;
    } cases[] = {
        {"covers go although their option was switched off", 0, true, 2, false, true},
        {"covers do not come when their option is switched on", 0, false, 0, false, true},
        {"hidden applications stay when their option was switched off", 2, true, 2, false, false},
        {"user-hidden applications come when their option was switched on", 2, false, 2, true, true},
    };
    for (const auto& [what, index, before, coversWhileOn, isVisibleWhileOn, isVisibleAfter] : cases) {
        SCOPED_TRACE(what);
        const Launch launch(mac);
        const auto editor = openWindow("Editor");
        openWindow("Browser");
        auto& settings = UserSettings::shared();
        for (std::size_t other = 0; other < 3; ++other)
            settings.setOptionIsOn(other, other != index || before);
        journalOfSwitch();
        EXPECT_EQ(HideDesktop::shared().managedWindows.size(), coversWhileOn);
        EXPECT_EQ(isVisible(editor), isVisibleWhileOn);
        EXPECT_EQ(mac.workspace().isHiding(), !isVisibleWhileOn);
        settings.setOptionIsOn(index, !before);
        if (isVisibleWhileOn)
            mac.workspace().userHides(owner(editor));
        journalOfSwitch();
        EXPECT_TRUE(HideDesktop::shared().managedWindows.empty());
        EXPECT_EQ(isVisible(editor), isVisibleAfter);
        EXPECT_FALSE(mac.workspace().isHiding());
    }
}

TEST_F(CoreTavroTest, TheSpeakerGoesByItsOptionAndTheMicrophonesAlwaysComeBack) {
    const struct {
        const char* what;
        bool isOnBefore;
        bool isOnAfter;
        bool isMutedWhileOn;
        bool isMutedAfter;
    } cases[] = {
        {"on", true, true, true, false},
        {"off; the user had muted it", false, false, true, true},
        {"switched off meanwhile", true, false, true, true},
        {"switched on meanwhile; the user had muted it", false, true, true, false},
    };
    for (const auto& [what, isOnBefore, isOnAfter, isMutedWhileOn, isMutedAfter] : cases) {
        SCOPED_TRACE(what);
        auto& audio = mac.audioHardware();
        audio.otherProgramSetsMute(speaker, !isOnBefore);
        const auto desk = audio.plugIn(SimulatedAudioHardware::microphone("Desk"));
        const Launch launch(mac);
        setOption("muteSpeaker", isOnBefore);
        journalOfSwitch();
        EXPECT_EQ(audio.isMuted(speaker), isMutedWhileOn);
        for (const auto device : {microphone, desk}) {
            EXPECT_EQ(audio.isMuted(device), false);
            audio.otherProgramSetsMute(device, true);
        }
        setOption("muteSpeaker", isOnAfter);
        journalOfSwitch();
        EXPECT_EQ(audio.isMuted(speaker), isMutedAfter);
        for (const auto device : {microphone, desk})
            EXPECT_EQ(audio.isMuted(device), false);
        audio.unplug(desk);
    }
}

TEST_F(CoreTavroTest, WithoutAudioTheSequencesRunToTheirEnds) {
    const Launch launch(mac);
    mac.audioHardware().unplugAll();
    setOption("muteSpeaker", true);
    for (const std::size_t stripCalls : {3u, 1u}) {
        const auto lines = journalOfSwitch();
        EXPECT_EQ(lines.back(), "TavroToogle");
        EXPECT_EQ(std::ranges::count(lines, "log.print Output audio error"), 1);
        EXPECT_EQ(std::ranges::count(lines, "log.print Listener error"), 1);
        EXPECT_EQ(mac.journal().lines("controlStrip").size(), stripCalls);
    }
}

TEST_F(CoreTavroTest, TheWallpaperChoiceIsTheOptionOrNone) {
    const Launch launch(mac);
    const std::vector<OptionItem> desktop{{"hideDesktop", "", true}};
    const struct {
        std::vector<OptionItem> wallpaper;
        std::optional<bool> choice;
    } cases[] = {
        {{{"changeWallpaper", "", true}, {"changeWallpaper", "", false}}, true},
        {{{"changeWallpaper", "", false}}, false},
        {{}, std::nullopt},
    };
    for (const auto& [wallpaper, choice] : cases) {
        auto options = desktop;
        options.insert(options.end(), wallpaper.begin(), wallpaper.end());
        UserSettings::shared().setOptions(options);
        journalOfSwitch();
        EXPECT_EQ(HideDesktop::shared().changeWallpaper, choice);
        journalOfSwitch();
        EXPECT_EQ(HideDesktop::shared().changeWallpaper, choice);
    }
}

TEST_F(CoreTavroTest, EveryStepGoesOnWhereTheMachineRefusesOne) {
    const Launch launch(mac);
    const auto editor = openWindow("Editor");
    openWindow("Browser");
    mac.windowServer().failNextWindow();
    journalOfSwitch();
    EXPECT_EQ(HideDesktop::shared().managedWindows.size(), 2u);
    EXPECT_EQ(HideDesktop::shared().managedWindows.front().window, nullptr);
    EXPECT_NE(HideDesktop::shared().managedWindows.back().window, nullptr);
    EXPECT_FALSE(isVisible(editor));
    journalOfSwitch();
    EXPECT_TRUE(HideDesktop::shared().managedWindows.empty());
    EXPECT_TRUE(isVisible(editor));
}

} // namespace
} // namespace tavro
