#include "support/machines/AudioAddresses.h"
#include "support/machines/TestMachine.h"

#include <algorithm>
#include <tuple>

namespace tavro {
namespace {

class AudioHardwareContract : public Contract, protected AudioAddresses {
protected:
    struct Device {
        std::string uid;
        AudioObjectID id = 0;
    };

    AudioHardware& hardware() { return machine().audioHardware(); }

    Device addInput(const std::string& name = "Desk Microphone") {
        return await(testMachine->addInputDevice(name));
    }
    Device addOutput(const std::string& name = "Hall Speaker") {
        return await(testMachine->addOutputDevice(name));
    }
    Device await(const std::string& uid) {
        EXPECT_TRUE(waitUntil([&] { return idOf(uid) != 0; })) << uid;
        return {uid, idOf(uid)};
    }
    AudioObjectID idOf(const std::string& uid) { return deviceWithUID(hardware(), uid); }
    Words ids() { return devices(hardware()); }
    /// Zero where the call fails.
    std::uint32_t sizeOf(AudioObjectID object, const Address& address) {
        std::uint32_t size = 0;
        return hardware().getPropertyDataSize(object, address, size) == noErr ? size : 0;
    }
    std::string text(AudioObjectID object, std::uint32_t selector) {
        return read<std::string>(hardware(), object, {selector}, 8);
    }
    std::optional<std::uint32_t> word(AudioObjectID object, const Address& address) {
        AudioPropertyValue value;
        if (hardware().getPropertyData(object, address, 4, value) != noErr)
            return std::nullopt;
        const auto* number = std::get_if<std::uint32_t>(&value);
        return number ? std::optional(*number) : std::nullopt;
    }
    OSStatus mute(AudioObjectID object, std::uint32_t isMuted) {
        return hardware().setPropertyData(object, inputMute, 4, isMuted);
    }
    AudioPropertyListener listener(std::string name) {
        return std::make_shared<const std::function<void()>>(
            [this, name = std::move(name)] { heard += name + ' '; });
    }
};

TEST_F(AudioHardwareContract, ADeviceHasANameAndThePropertiesOfItsDirection) {
    const auto microphone = addInput(), speaker = addOutput();
    EXPECT_EQ(text(microphone.id, kAudioObjectPropertyName), "Desk Microphone");
    EXPECT_EQ(text(speaker.id, kAudioObjectPropertyName), "Hall Speaker");
    EXPECT_EQ(sizeOf(microphone.id, name), 8u);
    EXPECT_EQ(word(microphone.id, inputMute), 0u);
    EXPECT_EQ(word(speaker.id, outputMute), 0u);
    AudioPropertyValue volume;
    ASSERT_EQ(hardware().getPropertyData(speaker.id, outputVolume, 4, volume), noErr);
    EXPECT_GE(std::get<float>(volume), 0);
    EXPECT_LE(std::get<float>(volume), 1);
    // The direction is the size of the lists of streams.
    EXPECT_GE(sizeOf(microphone.id, inputStreams), 4u);
    EXPECT_GE(sizeOf(speaker.id, outputStreams), 4u);
    for (const auto& [id, address] : {std::pair(microphone.id, outputStreams), {speaker.id, inputStreams}}) {
        std::uint32_t size = 99;
        EXPECT_EQ(hardware().getPropertyDataSize(id, address, size), noErr);
        EXPECT_EQ(size, 0u);
    }
}

TEST_F(AudioHardwareContract, UnknownObjectsAndPropertiesHaveTheirOwnErrors) {
    const auto microphone = addInput().id, speaker = addOutput().id;
    constexpr auto noObject = kAudioHardwareBadObjectError, noProperty = kAudioHardwareUnknownPropertyError,
                   badSize = kAudioHardwareBadPropertySizeError;
    const std::tuple<const char*, AudioObjectID, Address, std::uint32_t, OSStatus> cases[] = {
        {"no object", 0, name, 8, noObject},
        {"a device that never was", 0xfffffff0, name, 8, noObject},
        {"a device's property of the system", kAudioObjectSystemObject, name, 8, noProperty},
        {"the system's property of a device", microphone, deviceList, 8, noProperty},
        {"nothing known", microphone, {fourCharacterCode("tavr")}, 4, noProperty},
        {"mute of a microphone's output", microphone, outputMute, 4, noProperty},
        {"mute of a speaker's input", speaker, inputMute, 4, noProperty},
        {"mute of no side", speaker, {kAudioDevicePropertyMute}, 4, noProperty},
        {"another element", microphone, {inputMute.selector, inputMute.scope, 1}, 4, noProperty},
        {"volume of a microphone", microphone, outputVolume, 4, noProperty},
        {"too small", microphone, name, 7, badSize},
        {"too large", microphone, inputMute, 8, badSize},
    };
    for (const auto& [what, object, address, size, expected] : cases) {
        SCOPED_TRACE(what);
        AudioPropertyValue value = std::string("kept");
        EXPECT_EQ(hardware().getPropertyData(object, address, size, value), expected);
        EXPECT_EQ(value, AudioPropertyValue("kept"));
        EXPECT_EQ(hardware().hasProperty(object, address), expected == badSize);
        EXPECT_EQ(sizeOf(object, address) != 0, expected == badSize);
        EXPECT_NE(hardware().setPropertyData(object, address, size, std::uint32_t{1}), noErr);
    }
    for (const auto& [object, address, size, value] :
         {std::tuple(kAudioObjectSystemObject, inputMute, 4u, AudioPropertyValue(1u)),
          {microphone, name, 8u, std::string("Other")},
          {microphone, inputMute, 4u, 1.0f},
          {speaker, outputVolume, 4u, 0.5f}})
        EXPECT_NE(hardware().setPropertyData(object, address, size, value), noErr);
    EXPECT_EQ(word(microphone, inputMute), 0u);
    EXPECT_EQ(text(microphone, name.selector), "Desk Microphone");
}

TEST_F(AudioHardwareContract, DeviceNumbersAreStableAndNeverReused) {
    const auto first = addInput(), second = addInput("Room Microphone");
    EXPECT_NE(first.id, second.id);
    testMachine->removeDevice(first.uid);
    EXPECT_TRUE(waitUntil([&] { return idOf(first.uid) == 0; }));
    EXPECT_EQ(idOf(second.uid), second.id);
    const auto third = addInput();
    EXPECT_NE(third.id, first.id);
    EXPECT_NE(third.id, second.id);
    EXPECT_EQ(std::ranges::count(ids(), third.id), 1);
    EXPECT_EQ(word(first.id, inputMute), std::nullopt);
    EXPECT_FALSE(hardware().hasProperty(first.id, inputMute));
    EXPECT_EQ(mute(first.id, 1), kAudioHardwareBadObjectError);
}

TEST_F(AudioHardwareContract, AListIsCutToTheSizeGiven) {
    addInput();
    addInput("Room Microphone");
    const auto all = ids();
    EXPECT_EQ(sizeOf(kAudioObjectSystemObject, deviceList), 4 * all.size());
    for (const std::uint32_t size : {4u, 400u}) {
        AudioPropertyValue value;
        EXPECT_EQ(hardware().getPropertyData(kAudioObjectSystemObject, deviceList, size, value), noErr);
        EXPECT_EQ(value, AudioPropertyValue(size == 4 ? Words{all.front()} : all));
    }
}

TEST_F(AudioHardwareContract, MutingTakesEffectSoonAfterTheCall) {
    const auto microphone = addInput(), other = addInput("Room Microphone"), speaker = addOutput();
    for (const auto& [device, address] : {std::pair(microphone, inputMute), {speaker, outputMute}})
        for (const std::uint32_t mute : {1u, 1u, 0u, 0u}) {
            EXPECT_EQ(hardware().setPropertyData(device.id, address, 4, mute), noErr);
            EXPECT_TRUE(waitUntil([&, id = device.id, &mutes = address] { return word(id, mutes) == mute; }));
            EXPECT_EQ(testMachine->isMutedOnServer(device.uid), mute == 1);
        }
    EXPECT_FALSE(testMachine->isMutedOnServer(other.uid));
}

TEST_F(AudioHardwareContract, DefaultDevicesFollowTheServerAndListenersHearOfChanges) {
    const auto microphone = addInput(), otherMicrophone = addInput("Room Microphone"), speaker = addOutput();
    const auto isDefault = [&](const Address& address, AudioObjectID id) {
        return waitUntil([&] { return word(kAudioObjectSystemObject, address) == id; });
    };
    testMachine->setDefaultInput(microphone.uid);
    testMachine->setDefaultOutput(speaker.uid);
    EXPECT_TRUE(isDefault(defaultInput, microphone.id));
    EXPECT_TRUE(isDefault(defaultOutput, speaker.id));
    for (const auto& [address, which] : {std::pair(defaultInput, "input"), {defaultOutput, "output"}})
        hardware().addPropertyListener(kAudioObjectSystemObject, address, listener(which));
    testMachine->setDefaultInput(otherMicrophone.uid);
    EXPECT_TRUE(hears("input "));
    EXPECT_TRUE(isDefault(defaultInput, otherMicrophone.id));
    EXPECT_TRUE(isDefault(defaultOutput, speaker.id));
    testMachine->setDefaultOutput(addOutput("Other Speaker").uid);
    EXPECT_TRUE(hears("input output "));
}

TEST_F(AudioHardwareContract, ListenersHearOfEveryChangeOnceItIsInEffect) {
    const auto microphone = addInput(), other = addInput("Room Microphone");
    const auto seen = std::make_shared<const std::function<void()>>(
        [&] { heard += word(microphone.id, inputMute) == 1u ? "muted " : "live "; });
    EXPECT_EQ(hardware().addPropertyListener(microphone.id, inputMute, seen), noErr);
    EXPECT_EQ(hardware().addPropertyListener(other.id, inputMute, listener("other")), noErr);

    testMachine->otherProgramSetsMute(microphone.uid, true);
    EXPECT_TRUE(hears("muted "));
    mute(microphone.id, 0);
    EXPECT_EQ(heard, "muted ") << "notified inside the call";
    EXPECT_TRUE(hears("muted live "));
    // What is the same as before is no change; the listeners of what comes after it would be called after it.
    mute(microphone.id, 0);
    testMachine->otherProgramSetsMute(other.uid, true);
    EXPECT_TRUE(hears("muted live other "));
}

TEST_F(AudioHardwareContract, EachRegistrationIsCalledOnceAndRemovedOnce) {
    const auto microphone = addInput();
    const auto twice = listener("twice"), last = listener("last");
    const auto add = [&](const auto& each) {
        return hardware().addPropertyListener(microphone.id, inputMute, each);
    };
    const auto remove = [&](const auto& each, const Address& address = inputMute) {
        return hardware().removePropertyListener(microphone.id, address, each);
    };
    EXPECT_EQ(add(twice), noErr);
    EXPECT_EQ(add(twice), noErr);
    testMachine->otherProgramSetsMute(microphone.uid, true);
    EXPECT_TRUE(hears("twice twice "));
    EXPECT_NE(remove(last), noErr);
    EXPECT_NE(remove(twice, outputMute), noErr);
    EXPECT_EQ(remove(twice), noErr);
    testMachine->otherProgramSetsMute(microphone.uid, false);
    EXPECT_TRUE(hears("twice twice twice "));
    EXPECT_EQ(remove(twice), noErr);
    EXPECT_NE(remove(twice), noErr);
    EXPECT_EQ(add(last), noErr);
    testMachine->otherProgramSetsMute(microphone.uid, true);
    EXPECT_TRUE(hears("twice twice twice last "));

    heard.clear();
    const auto both = std::make_shared<std::function<void()>>();
    *both = [&] { // from within the call
        heard += "both ";
        remove(last);
        remove(both);
    };
    add(both);
    testMachine->otherProgramSetsMute(microphone.uid, false);
    EXPECT_TRUE(hears("last both "));
    add(twice);
    testMachine->otherProgramSetsMute(microphone.uid, true);
    EXPECT_TRUE(hears("last both twice "));

    testMachine->removeDevice(microphone.uid);
    EXPECT_TRUE(waitUntil([&] { return idOf(microphone.uid) == 0; }));
    EXPECT_NE(add(twice), noErr);
    EXPECT_NE(remove(last), noErr);
}

} // namespace
} // namespace tavro
