#include "support/machines/AudioTest.h"

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
    const auto hall = plugInSpeaker("Hall");
    audio.fail(AudioCall::setData, hall, outputMute, kAudioHardwareUnspecifiedError);
    for (const auto device : {AudioObjectID{0}, plugInSpeaker("Without a flag", std::nullopt), hall}) {
        audio.setDefaultOutput(device);
        mac.journal().clear();
        MuteSpeaker::setMute(true);
        EXPECT_EQ(mac.journal().lines("log.print"), Lines{"log.print Output audio error"}) << device;
    }
    EXPECT_EQ(audio.isMuted(hall), false);
}

} // namespace
} // namespace tavro
