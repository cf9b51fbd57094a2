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
}

TEST_F(MuteSpeakerTest, FailureIsLoggedOnceAndChangesNothing) {
    const std::tuple<bool, std::optional<bool>, AudioCall, Address> cases[] = {
        {false, false, {}, {}}, // no default device
        {true, std::nullopt, {}, {}},
        {true, false, AudioCall::getData, name},
        {true, false, AudioCall::setData, outputMute},
    };
    for (const auto& [hasDefault, flag, call, address] : cases) {
        SCOPED_TRACE(&call - &std::get<2>(cases[0]));
        const auto speaker = plugInSpeaker("Hall", flag);
        audio.setDefaultOutput(hasDefault ? speaker : 0);
        audio.fail(call, speaker, address, kAudioHardwareUnspecifiedError);
        mac.journal().clear();
        MuteSpeaker::setMute(true);
        EXPECT_EQ(mac.journal().lines("log.print"), Lines{"log.print Output audio error"});
        EXPECT_EQ(audio.isMuted(speaker), flag);
    }
}

} // namespace
} // namespace tavro
