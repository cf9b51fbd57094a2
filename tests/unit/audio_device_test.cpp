#include "AudioTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <tuple>

namespace tavro {
namespace {

constexpr auto system = kAudioObjectSystemObject;
constexpr OSStatus failed = -50;

using AudioDeviceTest = AudioTest;

Lines namesOf(const std::vector<AudioDevice>& devices) {
    Lines names;
    for (const auto& device : devices)
        names.push_back(device.name);
    return names;
}

/// The sides with streams, the volume and the mute flag of what was read, or the reason why nothing was.
std::string outcome(const Result<AudioDevice, AudioDevice::Failure>& result) {
    if (result) {
        const auto& [id, name, uid, isInput, isOutput, volume, mute] = *result;
        return std::string(isInput ? "in" : "") + (isOutput ? "out" : "") + (volume ? " loud" : "") +
               (!mute   ? ""
                : *mute ? " muted"
                        : " live");
    }
    if (const auto* error = std::get_if<AudioDevice::Error>(&result.error()))
        return *error == AudioDevice::Error::invalidDeviceId ? "invalidDeviceId" : "another error";
    return "status " + std::to_string(std::get<OSStatusError>(result.error()).code);
}

TEST_F(AudioDeviceTest, LoadsWhenIdentityAndStreamsAreReadable) {
    const SimulatedAudioSide live{1, false, {}}, muted{2, true, 0.5f}, silent{0, true, 0.5f};
    const std::tuple<const char*, SimulatedAudioSide, SimulatedAudioSide, const char*> sides[] = {
        {"input", live, silent, "in loud live"},
        {"output", {0, false, {}}, muted, "out loud muted"},
        {"both", live, muted, "inout loud live"},
        {"neither", {}, {}, ""},
    };
    for (const auto& [what, input, output, expected] : sides)
        EXPECT_EQ(outcome(AudioDevice::load(audio.plugIn({"Device", "uid", input, output}))), expected)
            << what;
    const std::tuple<AudioCall, Address, const char*> faults[] = {
        {AudioCall::getData, name, "invalidDeviceId"},    {AudioCall::getData, uid, "invalidDeviceId"},
        {AudioCall::getSize, inputStreams, "status -50"}, {AudioCall::getSize, outputStreams, "status -50"},
        {AudioCall::getData, inputMute, "inout loud"},    {AudioCall::getData, outputVolume, "inout live"},
    };
    for (const auto& [call, address, expected] : faults) {
        const auto id = audio.plugIn({"Device", "uid", live, muted});
        audio.fail(call, id, address, failed);
        EXPECT_EQ(outcome(AudioDevice::load(id)), expected) << address.selector;
    }
    EXPECT_EQ(outcome(AudioDevice::load(99)), "invalidDeviceId");
}

TEST_F(AudioDeviceTest, TheDefaultDeviceFailsWithTheErrorThatOccurred) {
    const auto microphone = plugInMicrophone("Desk");
    const auto speaker = plugInSpeaker("Hall");
    audio.setDefaultInput(microphone);
    audio.setDefaultOutput(speaker);
    EXPECT_EQ(AudioDevice::defaultDevice(kAudioHardwarePropertyDefaultInputDevice)->id, microphone);
    EXPECT_EQ(AudioDevice::defaultDevice(kAudioHardwarePropertyDefaultOutputDevice)->id, speaker);

    const auto outcomeNow = [] {
        return outcome(AudioDevice::defaultDevice(kAudioHardwarePropertyDefaultInputDevice));
    };
    audio.fail(AudioCall::getSize, microphone, inputStreams, kAudioHardwareUnspecifiedError);
    EXPECT_EQ(outcomeNow(), "status 2003329396");
    audio.fail(AudioCall::getData, system, defaultInput, failed);
    EXPECT_EQ(outcomeNow(), "status -50");
    audio.fail(AudioCall::getData, system, defaultInput, noErr);
    audio.unplug(microphone);
    EXPECT_EQ(outcomeNow(), "invalidDeviceId");
}

TEST_F(AudioDeviceTest, ListKeepsTheOrderAndOmitsUnreadableDevices) {
    EXPECT_EQ(AudioDevice::allDevices().size(), 0u);
    plugInSpeaker("Hall");
    plugInMicrophone("Desk");
    const auto broken = plugInMicrophone("Broken");
    plugInHeadset("Headset");
    audio.fail(AudioCall::getSize, broken, outputStreams, failed);
    EXPECT_EQ(namesOf(AudioDevice::allDevices()), (Lines{"Hall", "Desk", "Headset"}));
    EXPECT_EQ(namesOf(AudioDevice::inputDevices()), (Lines{"Desk", "Headset"}));
    for (const std::uint32_t size : {0u, 3u, 7u, 8u, 40u}) {
        SCOPED_TRACE(size); // as many devices as the list's size has room for
        audio.misreportSize(system, deviceList, size);
        EXPECT_EQ(AudioDevice::allDevices().size(), std::min(size / 4, 3u));
    }
    for (const auto call : {AudioCall::getData, AudioCall::getSize}) {
        audio.fail(call, system, deviceList, failed);
        EXPECT_EQ(AudioDevice::allDevices().size(), 0u);
    }
    EXPECT_EQ(mac.log().printed(), Lines{});
}

TEST_F(AudioDeviceTest, EqualityAndHashCoverEveryField) {
    const AudioDevice devices[] = {
        {41, "Desk", "uid", true, false, {}, {}},   {42, "Desk", "uid", true, false, {}, {}},
        {41, "Room", "uid", true, false, {}, {}},   {41, "Desk", "other", true, false, {}, {}},
        {41, "Desk", "uid", false, false, {}, {}},  {41, "Desk", "uid", true, true, {}, {}},
        {41, "Desk", "uid", true, false, 0.0, {}},  {41, "Desk", "uid", true, false, {}, false},
        {41, "uid", "Desk", true, false, {}, true},
    };
    const std::hash<AudioDevice> hash;
    std::set<std::size_t> hashes;
    for (const auto& device : devices) {
        EXPECT_EQ(hash(device), hash(AudioDevice(device)));
        EXPECT_TRUE(hashes.insert(hash(device)).second) << device.description();
        EXPECT_EQ(std::ranges::count(devices, device), 1);
    }
}

TEST_F(AudioDeviceTest, DescriptionStaysOnOneLine) {
    EXPECT_EQ(
        (AudioDevice{42, "The \"big\"\n\x7fone", "C:\\Café ~", false, true, 0.5, std::nullopt}.description()),
        "AudioDevice(id: 42, name: \"The \\\"big\\\"\\x0a\\x7fone\", uid: \"C:\\\\Café ~\", isInput: false, "
        "isOutput: true, volume: 0.5, mute: none)");
}

TEST_F(AudioDeviceTest, MuteListenerIsCalledOnTheMainQueueUntilRemoved) {
    const auto first = plugInMicrophone("First");
    const auto second = plugInMicrophone("Second");
    std::string told;
    EXPECT_EQ(AudioDevice::addMuteListener(first, [&] { told += "first "; }), 0);
    EXPECT_EQ(AudioDevice::addMuteListener(first, [&] { told += "again "; }), 1);
    EXPECT_EQ(AudioDevice::addMuteListener(99, [] {}), 2); // also where the platform refuses
    EXPECT_EQ(AudioDevice::addMuteListener(second, [&] { told += "second "; }), 3);
    audio.otherProgramSetsMute(first, true);
    EXPECT_EQ(told, "");
    mac.mainQueue().runUntilIdle();
    EXPECT_EQ(told, "first again ");
    for (const int listener : {0, 0, 4, -1}) // of which only the first is there
        AudioDevice::removeMuteListener(first, listener);
    audio.otherProgramSetsMute(first, false);
    audio.otherProgramSetsMute(second, true);
    mac.mainQueue().runUntilIdle();
    EXPECT_EQ(told, "first again again second ");
    EXPECT_EQ(mac.journal().lines("audioHardware.removePropertyListener"),
              Lines{"audioHardware.removePropertyListener 43 mute inpt"});
}

TEST_F(AudioDeviceTest, ListenersOnAllDevicesAreKeptByPosition) {
    plugInSpeaker("Hall");
    const auto first = plugInMicrophone("First");
    const auto second = plugInMicrophone("Second");
    int told = 0;
    AudioDevice::addInputDevicesMuteListener([&] { ++told; });
    for (const auto device : {first, second})
        audio.otherProgramSetsMute(device, true);
    mac.mainQueue().runUntilIdle();
    EXPECT_EQ(told, 2);

    const auto removals = [&] {
        mac.journal().clear();
        AudioDevice::removeInputDevicesMuteListener();
        return mac.journal().lines("audioHardware.removePropertyListener").size();
    };
    audio.unplug(second);
    EXPECT_EQ(removals(), 1u);
    EXPECT_EQ(audio.muteListenerCount(first), 0);
    plugInMicrophone("Third");
    EXPECT_EQ(removals(), 0u); // the first position has no entry any more; the second one still has
    AudioDevice::addInputDevicesMuteListener([] {});
    plugInMicrophone("Fourth");
    EXPECT_EQ(removals(), 2u);
    EXPECT_EQ(removals(), 0u);
}

TEST_F(AudioDeviceTest, AddingListenersTwiceLeavesTheFirstOnesInPlace) {
    const auto device = plugInMicrophone("Desk");
    std::string told;
    AudioDevice::addInputDevicesMuteListener([&] { told += "former "; });
    AudioDevice::addInputDevicesMuteListener([&] { told += "new "; });
    AudioDevice::removeInputDevicesMuteListener();
    AudioDevice::removeInputDevicesMuteListener();
    audio.otherProgramSetsMute(device, true);
    mac.mainQueue().runUntilIdle();
    EXPECT_EQ(told, "former ");
}

} // namespace
} // namespace tavro
