#include "support/desktop/DesktopTest.h"
#include "support/servers/AudioServer.h"

#include <set>

/// The real program beside the session's audio server, which other programs use meanwhile.
class Sound : public DesktopTest {
protected:
    using Muted = std::set<std::string>;

    std::unique_ptr<TavroProcess> launchMutingSpeaker() {
        writeDefaults("<key>muteSpeaker</key><true/>");
        return launch();
    }

    Muted muted() {
        Muted names;
        for (const auto& [name, isMuted] : audio.muteFlags())
            if (isMuted)
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

    AudioServer audio;
};

TEST_F(Sound, ThePresentationMutesTheDefaultSpeakerAndItsEndUnmutesEveryMicrophone) {
    auto tavro = launchMutingSpeaker();
    audio.mute("mic_2", true);
    toggle(*tavro);
    EXPECT_TRUE(becomeMuted({"mic_2", "speaker_1"}));
    audio.mute("mic_1", true);
    toggle(*tavro);
    EXPECT_TRUE(becomeMuted({}));
    toggle(*tavro);
    EXPECT_TRUE(becomeMuted({"speaker_1"}));
    quit(tavro);
    EXPECT_EQ(muted(), Muted{});
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
    for (const auto* name : {"mic_1", "mic_2"})
        audio.mute(name, true);
    EXPECT_TRUE(buttonShows(true));
    audio.mute("mic_2", false);
    EXPECT_TRUE(buttonShows(false));
    toggle(*tavro);
    EXPECT_TRUE(becomeMuted({}));
    quit(tavro);
}
