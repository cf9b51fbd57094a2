#include "AudioTest.h"

#include "audio/MuteSpeaker.h"

#include <gtest/gtest.h>

#include <tuple>

namespace tavro {
namespace {

using MuteSpeakerTest = AudioTest;

TEST_F(MuteSpeakerTest, MutesTheCurrentDefaultDevice) {
    const auto before = plugInSpeaker("Before");
    const auto after = plugInSpeaker("After", true);
    audio.setDefaultInput(plugInMicrophone("Desk"));
    audio.setDefaultOutput(before);
    MuteSpeaker::setMute(true);
    MuteSpeaker::setMute(true);
    audio.setDefaultOutput(after);
    MuteSpeaker::setMute(false);
    const std::string call = "audioHardware.setPropertyData ";
    EXPECT_EQ(writes(), (Lines{call + "43 mute outp 1", call + "43 mute outp 1", call + "44 mute outp 0"}));
    EXPECT_EQ(audio.isMuted(before), true);
    EXPECT_EQ(audio.isMuted(after), false);
    EXPECT_EQ(mac.log().printed(), Lines{});
}

TEST_F(MuteSpeakerTest, FailureIsLoggedOnceAndChangesNothing) {
    const std::tuple<const char*, bool, bool, std::optional<AudioCall>, Address> cases[] = {
        {"no default device", false, true, {}, {}},
        {"no mute flag", true, false, {}, {}},
        {"device cannot be read", true, true, AudioCall::getData, name},
        {"flag cannot be written", true, true, AudioCall::setData, outputMute},
    };
    for (const auto& [what, hasDefault, hasFlag, call, address] : cases) {
        SCOPED_TRACE(what);
        for (const bool mute : {true, false}) {
            const auto speaker = plugInSpeaker("Hall", hasFlag ? std::optional(!mute) : std::nullopt);
            audio.setDefaultOutput(hasDefault ? speaker : 0);
            if (call)
                audio.fail(*call, speaker, address, kAudioHardwareUnspecifiedError);
            mac.journal().clear();
            MuteSpeaker::setMute(mute);
            EXPECT_EQ(mac.journal().lines("log.print"), Lines{"log.print Output audio error"});
            EXPECT_EQ(writes().size(), call == AudioCall::setData ? 1u : 0u);
            EXPECT_NE(audio.isMuted(speaker), mute);
        }
    }
}

} // namespace
} // namespace tavro
