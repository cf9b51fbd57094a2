#include "AudioTest.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>

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

/// "loaded", or the reason why not.
std::string outcome(const Result<AudioDevice, AudioDevice::Failure>& result) {
    if (result)
        return "loaded";
    if (const auto* error = std::get_if<AudioDevice::Error>(&result.error()))
        return *error == AudioDevice::Error::invalidDeviceId ? "invalidDeviceId" : "another error";
    return "status " + std::to_string(std::get<OSStatusError>(result.error()).code);
}

TEST_F(AudioDeviceTest, LoadingReadsEachPropertyInItsScope) {
    const struct {
        const char* what;
        std::uint32_t inputStreams;
        std::uint32_t outputStreams;
        const char* muteScope;
        bool mute;
    } cases[] = {
        {"input", 1, 0, "inpt", true},
        {"output", 0, 2, "outp", false},
        {"both", 3, 1, "inpt", true},
        {"neither", 0, 0, "outp", false},
    };
    for (const auto& [what, inputs, outputs, muteScope, mute] : cases) {
        SCOPED_TRACE(what);
        const auto id = audio.plugIn(
            {"Device", std::string("uid ") + what, {inputs, true, 0.25f}, {outputs, false, 0.75f}});
        audio.takeCalls();
        const auto device = AudioDevice::load(id);
        const auto number = std::to_string(id);
        EXPECT_EQ(audio.takeCalls(), (Lines{
                                         "getPropertyData " + number + " lnam glob 8",
                                         "getPropertyData " + number + " uid  glob 8",
                                         "getPropertyDataSize " + number + " stm# inpt",
                                         "getPropertyDataSize " + number + " stm# outp",
                                         "hasProperty " + number + " mute " + muteScope,
                                         "getPropertyData " + number + " mute " + muteScope + " 4",
                                         "hasProperty " + number + " volm outp",
                                         "getPropertyData " + number + " volm outp 4",
                                     }));
        ASSERT_TRUE(device);
        EXPECT_EQ(*device, (AudioDevice{id, "Device", std::string("uid ") + what, inputs > 0, outputs > 0,
                                        0.75, mute}));
    }
}

TEST_F(AudioDeviceTest, OnlyIdentityAndStreamsAreNeededToLoad) {
    const auto none = std::nullopt;
    const struct {
        const char* what;
        const char* outcome;
        std::optional<AudioCall> call;
        AudioObjectPropertyAddress address;
        std::optional<bool> mute;
        std::optional<double> volume;
    } cases[] = {
        {"nothing fails", "loaded", none, {}, true, 0.5},
        {"name", "invalidDeviceId", AudioCall::getData, name, none, none},
        {"unique identifier", "invalidDeviceId", AudioCall::getData, uid, none, none},
        {"input streams", "status -50", AudioCall::getSize, inputStreams, none, none},
        {"output streams", "status -50", AudioCall::getSize, outputStreams, none, none},
        {"mute flag", "loaded", AudioCall::getData, inputMute, none, 0.5},
        {"volume", "loaded", AudioCall::getData, outputVolume, true, none},
    };
    for (const auto& [what, expected, call, address, mute, volume] : cases) {
        SCOPED_TRACE(what);
        const auto id = audio.plugIn({"Device", "uid", {1, true, {}}, {1, {}, 0.5f}});
        if (call)
            audio.fail(*call, id, address, failed);
        const auto device = AudioDevice::load(id);
        EXPECT_EQ(outcome(device), expected);
        if (device) {
            EXPECT_EQ(device->mute, mute);
            EXPECT_EQ(device->volume, volume);
        }
    }
    EXPECT_EQ(outcome(AudioDevice::load(99)), "invalidDeviceId");
    const auto bare = AudioDevice::load(audio.plugIn({"Bare", "uid", {1, {}, {}}, {0, true, {}}}));
    ASSERT_TRUE(bare);
    EXPECT_EQ(bare->mute, none); // the flag of the other side does not count
    EXPECT_EQ(bare->volume, none);
}

TEST_F(AudioDeviceTest, TheDefaultDeviceFailsWithWhatFailed) {
    const auto microphone = plugInMicrophone("Desk");
    const auto speaker = plugInSpeaker("Hall");
    audio.setDefaultInput(microphone);
    audio.setDefaultOutput(speaker);
    audio.takeCalls();
    EXPECT_EQ(AudioDevice::defaultDevice(kAudioHardwarePropertyDefaultInputDevice)->id, microphone);
    EXPECT_EQ(audio.takeCalls().front(), "getPropertyData 1 dIn  glob 4");
    EXPECT_EQ(AudioDevice::defaultDevice(kAudioHardwarePropertyDefaultOutputDevice)->id, speaker);

    const auto outcomeNow = [] {
        return outcome(AudioDevice::defaultDevice(kAudioHardwarePropertyDefaultInputDevice));
    };
    audio.fail(AudioCall::getSize, microphone, inputStreams, kAudioHardwareUnspecifiedError);
    EXPECT_EQ(outcomeNow(), "status 2003329396");
    audio.fail(AudioCall::getData, microphone, name, failed);
    EXPECT_EQ(outcomeNow(), "invalidDeviceId");
    audio.fail(AudioCall::getData, system, defaultInput, failed);
    EXPECT_EQ(outcomeNow(), "status -50");
    audio.fail(AudioCall::getData, system, defaultInput, noErr);
    audio.unplug(microphone);
    EXPECT_EQ(outcomeNow(), "invalidDeviceId");
}

TEST_F(AudioDeviceTest, DevicesKeepTheirOrderAndThoseThatFailAreLeftOut) {
    EXPECT_EQ(AudioDevice::allDevices().size(), 0u);
    EXPECT_EQ(AudioDevice::inputDevices().size(), 0u);
    plugInSpeaker("Hall");
    plugInMicrophone("Desk");
    const auto broken = plugInMicrophone("Broken");
    plugInHeadset("Headset");
    EXPECT_EQ(namesOf(AudioDevice::allDevices()), (Lines{"Hall", "Desk", "Broken", "Headset"}));
    audio.fail(AudioCall::getSize, broken, outputStreams, failed);
    EXPECT_EQ(namesOf(AudioDevice::allDevices()), (Lines{"Hall", "Desk", "Headset"}));
    EXPECT_EQ(namesOf(AudioDevice::inputDevices()), (Lines{"Desk", "Headset"}));
    EXPECT_EQ(mac.log().printed(), Lines{});
}

TEST_F(AudioDeviceTest, TheListIsAsLongAsItsSizeSays) {
    for (const auto* device : {"First", "Second", "Third"})
        plugInMicrophone(device);
    for (const std::uint32_t size : {0u, 1u, 3u, 4u, 7u, 8u, 11u, 12u, 40u}) {
        SCOPED_TRACE(size);
        audio.misreportSize(system, deviceList, size);
        audio.takeCalls();
        EXPECT_EQ(AudioDevice::allDevices().size(), std::min(size / 4, 3u));
        const auto calls = audio.takeCalls();
        EXPECT_EQ(calls[0], "getPropertyDataSize 1 dev# glob");
        if (size < 4)
            EXPECT_EQ(calls.size(), 1u);
        else
            EXPECT_EQ(calls[1], "getPropertyData 1 dev# glob " + std::to_string(size / 4 * 4));
    }
    for (const auto call : {AudioCall::getData, AudioCall::getSize}) {
        audio.fail(call, system, deviceList, failed);
        EXPECT_EQ(AudioDevice::allDevices().size(), 0u);
    }
}

TEST_F(AudioDeviceTest, EveryFieldCountsForEqualityAndHash) {
    const AudioDevice device{41, "Desk", "uid", true, false, std::nullopt, std::nullopt};
    const std::function<void(AudioDevice&)> changes[] = {
        [](auto& changed) { changed.id = 42; },         [](auto& changed) { changed.name = "Room"; },
        [](auto& changed) { changed.uid = "other"; },   [](auto& changed) { changed.isInput = false; },
        [](auto& changed) { changed.isOutput = true; }, [](auto& changed) { changed.volume = 0.0; },
        [](auto& changed) { changed.mute = false; },
    };
    const std::hash<AudioDevice> hash;
    EXPECT_EQ(hash(AudioDevice(device)), hash(device));
    std::set<std::size_t> hashes{hash(device)};
    for (const auto& change : changes) {
        auto changed = device;
        change(changed);
        EXPECT_NE(changed, device);
        EXPECT_TRUE(hashes.insert(hash(changed)).second) << changed.description();
    }
}

TEST_F(AudioDeviceTest, TheDescriptionIsOneLine) {
    EXPECT_EQ((AudioDevice{41, "Desk", "uid", true, false, std::nullopt, true}.description()),
              "AudioDevice(id: 41, name: \"Desk\", uid: \"uid\", isInput: true, isOutput: false, "
              "volume: none, mute: true)");
    EXPECT_EQ((AudioDevice{42, "The \"big\"\none", "C:\\Café", false, true, 0.5, std::nullopt}.description()),
              "AudioDevice(id: 42, name: \"The \\\"big\\\"\\x0aone\", uid: \"C:\\\\Café\", isInput: false, "
              "isOutput: true, volume: 0.5, mute: none)");
}

TEST_F(AudioDeviceTest, AListenerHearsItsDeviceOnTheMainQueueUntilItIsRemoved) {
    const auto first = plugInMicrophone("First");
    const auto second = plugInMicrophone("Second");
    std::string told;
    const auto listener = AudioDevice::addMuteListener(first, [&] { told += "first "; });
    AudioDevice::addMuteListener(first, [&] { told += "again "; });
    AudioDevice::addMuteListener(second, [&] { told += "second "; });
    audio.otherProgramSetsMute(first, true);
    EXPECT_EQ(told, "");
    mac.mainQueue().runUntilIdle();
    EXPECT_EQ(told, "first again ");
    AudioDevice::removeMuteListener(first, listener);
    audio.otherProgramSetsMute(first, false);
    audio.otherProgramSetsMute(second, true);
    mac.mainQueue().runUntilIdle();
    EXPECT_EQ(told, "first again again second ");
    EXPECT_EQ(mac.journal().lines("audioHardware.removePropertyListener"),
              Lines{"audioHardware.removePropertyListener 43 mute inpt"});
}

TEST_F(AudioDeviceTest, ListenersAreNumberedFromZeroAndAnUnknownOneIsIgnored) {
    const auto device = plugInMicrophone("Desk");
    EXPECT_EQ(AudioDevice::addMuteListener(device, [] {}), 0);
    EXPECT_EQ(AudioDevice::addMuteListener(99, [] {}), 1); // also where the platform refuses
    AudioDevice::removeMuteListener(device, 0);
    EXPECT_EQ(AudioDevice::addMuteListener(device, [] {}), 2);

    mac.journal().clear();
    audio.takeCalls();
    for (const int unknown : {0, 3, -1})
        AudioDevice::removeMuteListener(device, unknown);
    EXPECT_EQ(audio.takeCalls(), Lines{});
}

TEST_F(AudioDeviceTest, ListenersOnAllInputDevicesGoByTheirPositions) {
    plugInSpeaker("Hall");
    const auto first = plugInMicrophone("First");
    const auto second = plugInMicrophone("Second");
    const auto third = plugInMicrophone("Third");
    int told = 0;
    AudioDevice::addInputDevicesMuteListener([&] { ++told; });
    for (const auto device : {first, second, third})
        audio.otherProgramSetsMute(device, true);
    mac.mainQueue().runUntilIdle();
    EXPECT_EQ(told, 3);

    const auto removals = [&] {
        mac.journal().clear();
        AudioDevice::removeInputDevicesMuteListener();
        return mac.journal().lines("audioHardware.removePropertyListener").size();
    };
    audio.unplug(second);
    audio.unplug(third);
    EXPECT_EQ(removals(), 1u);
    EXPECT_EQ(audio.muteListenerCount(first), 0);
    const auto fourth = plugInMicrophone("Fourth");
    EXPECT_EQ(removals(), 0u); // the first position has no entry any more; the second one still has
    audio.unplug(fourth);
    AudioDevice::addInputDevicesMuteListener([] {});
    plugInMicrophone("Fifth");
    plugInMicrophone("Sixth");
    EXPECT_EQ(removals(), 3u);
    EXPECT_EQ(removals(), 0u);
}

TEST_F(AudioDeviceTest, AddingToAllAgainReplacesTheEntriesAndLeavesTheFormerListeners) {
    const auto device = plugInMicrophone("Desk");
    std::string told;
    AudioDevice::addInputDevicesMuteListener([&] { told += "former "; });
    AudioDevice::addInputDevicesMuteListener([&] { told += "new "; });
    audio.otherProgramSetsMute(device, true);
    mac.mainQueue().runUntilIdle();
    EXPECT_EQ(told, "former new ");
    AudioDevice::removeInputDevicesMuteListener();
    AudioDevice::removeInputDevicesMuteListener();
    audio.otherProgramSetsMute(device, false);
    mac.mainQueue().runUntilIdle();
    EXPECT_EQ(told, "former new former ");
}

} // namespace
} // namespace tavro
