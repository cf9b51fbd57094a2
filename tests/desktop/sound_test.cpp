#include "support/AudioServer.h"
#include "support/DesktopTest.h"

#include <algorithm>
#include <fstream>

/// The real program beside the session's audio server, which other programs use meanwhile.
class Sound : public DesktopTest {
protected:
    using Muted = std::set<std::string>;

    std::unique_ptr<TavroProcess> launchMutingSpeaker() {
        std::ofstream(defaultsFile())
            << R"(<plist version="1.0"><dict><key>muteSpeaker</key><true/></dict></plist>)";
        return launch();
    }

    Muted muted() {
        Muted names;
        for (const auto& devices : {audio.speakers(), audio.microphones()})
            for (const auto& [name, device] : devices)
                if (device.isMuted)
                    names.insert(name);
        return names;
    }

    testing::AssertionResult becomeMuted(const Muted& expected) {
        const auto result = server.eventually("the mute flags", [&] { return muted() == expected; });
        return result ? result : testing::AssertionFailure() << testing::PrintToString(muted());
    }

    testing::AssertionResult buttonShows(bool isMuted) {
        return server.eventually(isMuted ? "a red button" : "a green button",
                                 [&] { return isMuted ? tray.showsRedBezel() : tray.showsGreenBezel(); });
    }

    std::vector<double> volumes() {
        std::vector<double> all;
        for (const auto& [name, device] : audio.speakers())
            all.push_back(device.volume);
        return all;
    }

    AudioServer audio;
};

TEST_F(Sound, ThePresentationMutesTheDefaultSpeakerAndItsEndUnmutesEveryMicrophone) {
    audio.setVolume("speaker_1", 40);
    const auto volumesBefore = volumes();
    auto tavro = launchMutingSpeaker();
    const struct {
        const char* what;
        Muted before, during;
        std::function<void()> meanwhile;
        Muted after;
    } cases[] = {
        {"nothing muted", {}, {"speaker_1"}, [] {}, {}},
        {"a microphone muted before", {"mic_2"}, {"mic_2", "speaker_1"}, [] {}, {}},
        {"both microphones muted meanwhile",
         {},
         {"speaker_1"},
         [this] {
             audio.mute("mic_1", true);
             audio.mute("mic_2", true);
         },
         {}},
        // What is the default speaker then is what is unmuted.
        {"another default speaker",
         {"speaker_2"},
         {"speaker_1", "speaker_2"},
         [this] { audio.makeDefault("speaker_2"); },
         {"speaker_1"}},
    };
    for (const auto& [what, before, during, meanwhile, after] : cases) {
        SCOPED_TRACE(what);
        for (const auto& name : before)
            audio.mute(name, true);
        toggle(*tavro);
        EXPECT_TRUE(becomeMuted(during));
        meanwhile();
        toggle(*tavro);
        EXPECT_TRUE(becomeMuted(after));
    }
    EXPECT_EQ(volumes(), volumesBefore);
    quit(tavro);
    EXPECT_EQ(complaints(*tavro), "");
}

TEST_F(Sound, TheButtonFlipsTheMicrophonesAndFollowsWhateverElseDoes) {
    auto tavro = launch();
    toggle(*tavro);
    EXPECT_TRUE(buttonShows(false));
    for (const bool mute : {true, false}) {
        input.click(tray.buttonPlace(), Input::Button::left);
        EXPECT_TRUE(becomeMuted(mute ? Muted{"mic_1", "mic_2"} : Muted{}));
        EXPECT_TRUE(buttonShows(mute));
    }
    parkPointer();
    // All of them have to be muted for the button to be red.
    const std::tuple<const char*, bool, bool> changes[] = {
        {"mic_2", true, false}, {"mic_1", true, true}, {"mic_2", false, false}};
    for (const auto& [name, mute, isRed] : changes) {
        SCOPED_TRACE(name);
        audio.mute(name, mute);
        EXPECT_TRUE(buttonShows(isRed));
    }
    toggle(*tavro);
    EXPECT_TRUE(becomeMuted({}));
    quit(tavro);
}

TEST_F(Sound, AServerThatGoesAwayOrHangsIsNoHindranceAndIsFoundAgain) {
    auto tavro = launchMutingSpeaker();
    audio.freeze();
    toggle(*tavro);
    EXPECT_TRUE(everyScreenIsCovered());
    EXPECT_EQ(tavro->linesOfOutput("Output audio error"), 1);
    audio.thaw();
    toggle(*tavro);
    EXPECT_TRUE(becomeMuted({}));

    toggle(*tavro);
    EXPECT_TRUE(becomeMuted({"speaker_1"}));
    audio.end();
    audio.start();
    audio.mute("speaker_1", true); // as servers that restore it do
    audio.mute("mic_1", true);
    audio.mute("mic_2", true);
    EXPECT_TRUE(buttonShows(true));
    toggle(*tavro);
    EXPECT_TRUE(becomeMuted({}));

    audio.end();
    toggle(*tavro);
    EXPECT_TRUE(everyScreenIsCovered());
    toggle(*tavro);
    EXPECT_TRUE(everyIconShows());
    EXPECT_EQ(tavro->linesOfOutput("Output audio error"), 3);
    audio.start();
    quit(tavro);
}
