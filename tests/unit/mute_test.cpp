#include "support/machines/AudioTest.h"

#include "audio/MuteMic.h"
#include "audio/MuteSpeaker.h"

namespace tavro {
namespace {

class MuteMicTest : public AudioTest {
protected:
    void change(AudioObjectID device) {
        audio.otherProgramSetsMute(device, !audio.isMuted(device).value());
        mac.mainQueue().runUntilIdle();
    }
    /// The lines that were printed by the call.
    template <class Call>
    Lines printedBy(Call call) {
        mac.journal().clear();
        call();
        return mac.journal().lines("log.print");
    }
};

TEST_F(MuteMicTest, MutesEveryInputDeviceWithAFlag) {
    plugInSpeaker("Hall");
    plugInMicrophone("Muted", true);
    plugInMicrophone("Bare", std::nullopt);
    const auto refusing = plugInMicrophone("Refusing");
    const auto headset = plugInHeadset("Headset");
    audio.fail(AudioCall::setData, refusing, inputMute, -50);
    EXPECT_EQ(printedBy([] { MuteMic::setMute(true); }),
              Lines{"log.print Input audio error: AudioDevice(id: 46, name: \"Refusing\", "
                    "uid: \"uid of Refusing\", isInput: true, isOutput: false, volume: none, mute: false)"});
    const std::string call = "audioHardware.setPropertyData ";
    EXPECT_EQ(writes(), (Lines{call + "44 mute inpt 1", call + "46 mute inpt 1", call + "47 mute inpt 1"}));
    MuteMic::setMute(false);
    EXPECT_EQ(audio.isMuted(headset), false);
}

TEST_F(MuteMicTest, DefaultDeviceNotifiesTwiceAndOthersOnce) {
    const auto first = plugInMicrophone("First");
    const auto second = plugInMicrophone("Second");
    audio.setDefaultInput(first);
    for (int round = 0; round < 2; ++round) {
        int calls = 0;
        MuteMic::startObserving([&] { ++calls; });
        MuteMic::startObserving([&] { calls += 100; });
        EXPECT_EQ(MuteMic::listenerID(), round);
        change(first);
        EXPECT_EQ(calls, 2);
        change(second);
        EXPECT_EQ(calls, 3);
        MuteMic::stopObserving();
        EXPECT_EQ(MuteMic::listenerID(), -1);
        change(first);
        change(second);
        EXPECT_EQ(calls, 3);
    }
    EXPECT_EQ(mac.log().printed(), Lines{});
}

TEST_F(MuteMicTest, ListenerOfALostDefaultDeviceGoesWithTheNextStop) {
    const auto device = plugInMicrophone("Desk");
    audio.setDefaultInput(device);
    MuteMic::startObserving([] {});
    audio.setDefaultInput(0);
    EXPECT_EQ(printedBy([] { MuteMic::stopObserving(); }), Lines{"log.print Listener error"});
    EXPECT_EQ(printedBy([] { MuteMic::startObserving([] {}); }), Lines{}); // it is observing still
    EXPECT_EQ(audio.muteListenerCount(device), 1);
    audio.setDefaultInput(device);
    MuteMic::stopObserving();
    EXPECT_EQ(audio.muteListenerCount(device), 0);
}

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
