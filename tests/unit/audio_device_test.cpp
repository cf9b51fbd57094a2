#include "support/machines/AudioTest.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <set>
#include <tuple>

namespace tavro {
namespace {

constexpr auto system = kAudioObjectSystemObject;
constexpr OSStatus failed = -50;

using AudioDeviceTest = AudioTest;

/// The sides with streams, the volume and the mute flag of what was read, or the reason why nothing was.
std::string outcome(const Result<AudioDevice, AudioDevice::Failure>& result) {
    if (result)
        return result->description().substr(result->description().find("isInput"));
    if (const auto* status = std::get_if<OSStatusError>(&result.error()))
        return "status " + std::to_string(status->code);
    return "invalidDeviceId";
}

TEST_F(AudioDeviceTest, IsEncodedByTheNamesOfItsFields) {
    const std::pair<AudioDevice, const char*> devices[] = {
        {{7, "Mic", "m", true, false, 0.5, false},
         R"({"id":7,"isInput":true,"isOutput":false,"mute":false,"name":"Mic","uid":"m","volume":0.5})"},
        {{8, "", "", false, true, {}, {}}, R"({"id":8,"isInput":false,"isOutput":true,"name":"","uid":""})"},
    };
    for (const auto& [device, text] : devices) {
        EXPECT_EQ(device.encoded().dump(), text);
        const auto record = nlohmann::json::parse(text);
        EXPECT_EQ(AudioDevice::decode(record), device);
        for (const auto& [key, value] : record.items()) {
            auto without = record, withAnother = record;
            without.erase(key);
            withAnother[key] = nlohmann::json::array();
            EXPECT_EQ(AudioDevice::decode(without).has_value(), key == "volume" || key == "mute") << key;
            EXPECT_FALSE(AudioDevice::decode(withAnother)) << key;
        }
    }
    for (const auto* record : {"3", "[]", R"({"id":-1,"isInput":false,"isOutput":true,"name":"","uid":""})"})
        EXPECT_FALSE(AudioDevice::decode(nlohmann::json::parse(record))) << record;
}

TEST_F(AudioDeviceTest, LoadsWhenIdentityAndStreamsAreReadable) {
    const SimulatedAudioSide none, live{1, false, {}}, muted{2, true, 0.5f}, silent{0, true, 0.5f};
    const std::tuple<SimulatedAudioSide, SimulatedAudioSide, const char*> sides[] = {
        {live, silent, "isInput: true, isOutput: false, volume: 0.5, mute: false)"},
        {{0, false, {}}, muted, "isInput: false, isOutput: true, volume: 0.5, mute: true)"},
        {live, muted, "isInput: true, isOutput: true, volume: 0.5, mute: false)"},
        {none, none, "isInput: false, isOutput: false, volume: none, mute: none)"},
    };
    for (const auto& [input, output, expected] : sides)
        EXPECT_EQ(outcome(AudioDevice::load(audio.plugIn({"Device", "uid", input, output}))), expected);
    const std::tuple<AudioCall, Address, const char*> faults[] = {
        {AudioCall::getData, name, "invalidDeviceId"},
        {AudioCall::getData, uid, "invalidDeviceId"},
        {AudioCall::getSize, inputStreams, "status -50"},
        {AudioCall::getSize, outputStreams, "status -50"},
        {AudioCall::getData, inputMute, "isInput: true, isOutput: true, volume: 0.5, mute: none)"},
        {AudioCall::getData, outputVolume, "isInput: true, isOutput: true, volume: none, mute: false)"},
    };
    for (const auto& [call, address, expected] : faults) {
        const auto id = audio.plugIn({"Device", "uid", live, muted});
        audio.fail(call, id, address, failed);
        EXPECT_EQ(outcome(AudioDevice::load(id)), expected) << address.selector;
    }
}

TEST_F(AudioDeviceTest, TheDefaultDeviceReportsTheUnderlyingError) {
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
    plugInSpeaker("Hall");
    const auto desk = plugInMicrophone("Desk");
    const auto broken = plugInMicrophone("Broken");
    const auto headset = plugInHeadset("Headset");
    audio.fail(AudioCall::getSize, broken, outputStreams, failed);
    const auto inputs = AudioDevice::inputDevices();
    ASSERT_EQ(inputs.size(), 2u);
    EXPECT_EQ(inputs[0].id, desk);
    EXPECT_EQ(inputs[1].id, headset);
    for (const std::uint32_t size : {0u, 3u, 7u, 8u, 40u}) { // as many as the list's size has room for
        audio.misreportSize(system, deviceList, size);
        EXPECT_EQ(AudioDevice::allDevices().size(), std::min(size / 4, 3u)) << size;
    }
    for (const auto call : {AudioCall::getData, AudioCall::getSize}) {
        audio.fail(call, system, deviceList, failed);
        EXPECT_EQ(AudioDevice::allDevices().size(), 0u);
    }
}

TEST_F(AudioDeviceTest, EqualityAndHashCoverEveryField) {
    const AudioDevice device{41, "Desk", "uid", true, false, {}, {}};
    std::vector devices(8, device);
    devices[1].id = 42;
    devices[2].name = "Room";
    devices[3].uid = "other";
    devices[4].isInput = false;
    devices[5].isOutput = true;
    devices[6].volume = 0;
    devices[7].mute = false;
    std::set<std::size_t> hashes;
    for (const auto& each : devices) {
        EXPECT_EQ(std::ranges::count(devices, each), 1);
        EXPECT_TRUE(hashes.insert(std::hash<AudioDevice>()(each)).second) << each.description();
    }
}

TEST_F(AudioDeviceTest, DescriptionEscapesDeviceNames) {
    EXPECT_EQ(
        (AudioDevice{42, "The \"big\"\n\x7fone", "C:\\Café ~", false, true, 0.5, std::nullopt}.description()),
        "AudioDevice(id: 42, name: \"The \\\"big\\\"\n\x7fone\", uid: \"C:\\\\Café ~\", isInput: false, "
        "isOutput: true, volume: 0.5, mute: none)");
}

TEST_F(AudioDeviceTest, ListenersOnAllDevicesAreKeptByPosition) {
    plugInMicrophone("First");
    const auto second = plugInMicrophone("Second");
    const auto removals = [&] {
        mac.journal().clear();
        AudioDevice::removeInputDevicesMuteListener();
        return mac.journal().lines("audioHardware.removePropertyListener").size();
    };
    AudioDevice::addInputDevicesMuteListener([] {});
    audio.unplug(second);
    EXPECT_EQ(removals(), 1u);
    plugInMicrophone("Third");
    EXPECT_EQ(removals(), 0u); // the first position has no entry any more; the second one still has
    AudioDevice::addInputDevicesMuteListener([] {});
    plugInMicrophone("Fourth");
    EXPECT_EQ(removals(), 2u);
}

} // namespace
} // namespace tavro
