#pragma once

#include "Rig.h"

#include "platform/AudioHardware.h"

#include <algorithm>

namespace tavro {

/// A rig whose audio devices can be plugged in and out. Devices that a test did not add may be there too.
/// A device is known by its unique identifier, which each call below takes.
template <class R>
concept AudioRig = Rig<R> && requires(R rig, const std::string& text) {
    /// A device with one side, not muted, and this name; returns its unique identifier.
    { rig.addInputDevice(text) } -> std::convertible_to<std::string>;
    { rig.addOutputDevice(text) } -> std::convertible_to<std::string>;
    rig.removeDevice(text);
    rig.setDefaultInput(text);
    rig.setDefaultOutput(text);
    /// Another program sets the mute flag; returns when it is set.
    rig.otherProgramSetsMute(text, bool());
    /// The flag as another program sees it.
    { rig.isMutedOnServer(text) } -> std::same_as<bool>;
};

template <AudioRig R>
class AudioHardwareContract : public Contract<R> {
protected:
    using Address = AudioObjectPropertyAddress;
    using Words = std::vector<std::uint32_t>;

    struct Device {
        std::string uid;
        AudioObjectID id = 0;
    };

    AudioHardware& hardware() { return this->machine().audioHardware(); }

    Device addInput(const std::string& name) { return await(this->rig.addInputDevice(name)); }
    Device addOutput(const std::string& name) { return await(this->rig.addOutputDevice(name)); }
    Device await(const std::string& uid) {
        EXPECT_TRUE(this->waitUntil([&] { return idOf(uid) != 0; })) << uid;
        return {uid, idOf(uid)};
    }
    /// Zero when no device has this unique identifier.
    AudioObjectID idOf(const std::string& uid) {
        for (const auto id : ids())
            if (text(id, kAudioDevicePropertyDeviceUID) == uid)
                return id;
        return 0;
    }
    Words ids() {
        AudioPropertyValue value = Words();
        hardware().getPropertyData(kAudioObjectSystemObject, {kAudioHardwarePropertyDevices},
                                   sizeOf(kAudioObjectSystemObject, {kAudioHardwarePropertyDevices}), value);
        return std::get<Words>(value);
    }
    /// Zero where the call fails.
    std::uint32_t sizeOf(AudioObjectID object, const Address& address) {
        std::uint32_t size = 0;
        return hardware().getPropertyDataSize(object, address, size) == noErr ? size : 0;
    }
    std::string text(AudioObjectID object, std::uint32_t selector) {
        AudioPropertyValue value;
        hardware().getPropertyData(object, {selector}, 8, value);
        return std::get<std::string>(value);
    }
    std::optional<std::uint32_t> word(AudioObjectID object, const Address& address) {
        AudioPropertyValue value;
        if (hardware().getPropertyData(object, address, 4, value) != noErr)
            return std::nullopt;
        const auto* number = std::get_if<std::uint32_t>(&value);
        return number ? std::optional(*number) : std::nullopt;
    }
    bool comesToBe(AudioObjectID object, const Address& address, std::uint32_t expected) {
        return this->waitUntil([&] { return word(object, address) == expected; });
    }
    AudioPropertyListener listener(std::string name) {
        return std::make_shared<const std::function<void()>>(
            [this, name = std::move(name)] { told += name + ' '; });
    }
    bool tells(const std::string& expected) {
        return this->waitUntil([&] { return told == expected; });
    }

    std::string told;
    static constexpr Address inputMute{kAudioDevicePropertyMute, kAudioObjectPropertyScopeInput};
    static constexpr Address outputMute{kAudioDevicePropertyMute, kAudioObjectPropertyScopeOutput};
    static constexpr Address outputVolume{kAudioDevicePropertyVolumeScalar, kAudioObjectPropertyScopeOutput};
    static constexpr Address inputStreams{kAudioDevicePropertyStreams, kAudioObjectPropertyScopeInput};
    static constexpr Address outputStreams{kAudioDevicePropertyStreams, kAudioObjectPropertyScopeOutput};
    static constexpr Address defaultInput{kAudioHardwarePropertyDefaultInputDevice};
    static constexpr Address defaultOutput{kAudioHardwarePropertyDefaultOutputDevice};
};

TYPED_TEST_SUITE_P(AudioHardwareContract);

TYPED_TEST_P(AudioHardwareContract, ADeviceHasAnIdentityAndThePropertiesOfItsSide) {
    const auto microphone = this->addInput("Desk Microphone");
    const auto speaker = this->addOutput("Hall Speaker");
    EXPECT_EQ(this->text(microphone.id, kAudioObjectPropertyName), "Desk Microphone");
    EXPECT_EQ(this->text(speaker.id, kAudioObjectPropertyName), "Hall Speaker");
    const struct {
        const char* what;
        AudioObjectPropertyAddress address;
        bool isOfMicrophone;
        bool isOfSpeaker;
    } cases[] = {
        {"name", {kAudioObjectPropertyName}, true, true},
        {"unique identifier", {kAudioDevicePropertyDeviceUID}, true, true},
        {"mute flag of the input", this->inputMute, true, false},
        {"mute flag of the output", this->outputMute, false, true},
        {"volume of the output", this->outputVolume, false, true},
        {"second element", {kAudioDevicePropertyMute, kAudioObjectPropertyScopeInput, 1}, false, false},
        {"mute flag without a side", {kAudioDevicePropertyMute}, false, false},
        {"nothing known", {fourCharacterCode("tavr")}, false, false},
        {"property of the system", {kAudioHardwarePropertyDevices}, false, false},
    };
    for (const auto& [what, address, isOfMicrophone, isOfSpeaker] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(this->hardware().hasProperty(microphone.id, address), isOfMicrophone);
        EXPECT_EQ(this->hardware().hasProperty(speaker.id, address), isOfSpeaker);
        EXPECT_EQ(this->sizeOf(microphone.id, address) != 0, isOfMicrophone);
        EXPECT_EQ(this->sizeOf(speaker.id, address) != 0, isOfSpeaker);
    }
    EXPECT_EQ(this->word(microphone.id, this->inputMute), 0u);
    EXPECT_EQ(this->word(speaker.id, this->outputMute), 0u);
    AudioPropertyValue volume;
    ASSERT_EQ(this->hardware().getPropertyData(speaker.id, this->outputVolume, 4, volume), noErr);
    EXPECT_GE(std::get<float>(volume), 0);
    EXPECT_LE(std::get<float>(volume), 1);
}

TYPED_TEST_P(AudioHardwareContract, TheDirectionOfADeviceIsTheSizeOfItsStreamLists) {
    const auto microphone = this->addInput("Desk Microphone");
    const auto speaker = this->addOutput("Hall Speaker");
    const struct {
        AudioObjectID id;
        AudioObjectPropertyAddress own;
        AudioObjectPropertyAddress other;
    } cases[] = {{microphone.id, this->inputStreams, this->outputStreams},
                 {speaker.id, this->outputStreams, this->inputStreams}};
    for (const auto& [id, own, other] : cases) {
        EXPECT_GE(this->sizeOf(id, own), 4u);
        std::uint32_t size = 99;
        EXPECT_EQ(this->hardware().getPropertyDataSize(id, other, size), noErr);
        EXPECT_EQ(size, 0u);
    }
}

TYPED_TEST_P(AudioHardwareContract, NumbersStayWithTheirDevicesAndAreNotUsedAgain) {
    const auto first = this->addInput("Desk Microphone");
    const auto second = this->addInput("Room Microphone");
    EXPECT_NE(first.id, second.id);
    this->rig.removeDevice(first.uid);
    EXPECT_TRUE(this->waitUntil([&] { return this->idOf(first.uid) == 0; }));
    EXPECT_EQ(this->idOf(second.uid), second.id);
    const auto again = this->addInput("Desk Microphone");
    EXPECT_NE(again.id, first.id);
    EXPECT_NE(again.id, second.id);
    const auto ids = this->ids();
    EXPECT_EQ(std::ranges::count(ids, again.id), 1);

    std::uint32_t size = 99;
    EXPECT_NE(this->hardware().getPropertyDataSize(first.id, this->inputStreams, size), noErr);
    EXPECT_EQ(this->word(first.id, this->inputMute), std::nullopt);
    EXPECT_FALSE(this->hardware().hasProperty(first.id, this->inputMute));
    EXPECT_NE(this->hardware().setPropertyData(first.id, this->inputMute, 4, std::uint32_t{1}), noErr);
}

TYPED_TEST_P(AudioHardwareContract, AReadTakesTheSizeOfThePropertyAndOfAListWhatFits) {
    const auto microphone = this->addInput("Desk Microphone");
    this->addInput("Room Microphone");
    const auto ids = this->ids();
    EXPECT_EQ(this->sizeOf(kAudioObjectSystemObject, {kAudioHardwarePropertyDevices}), 4 * ids.size());
    EXPECT_EQ(this->sizeOf(microphone.id, {kAudioObjectPropertyName}), 8u);
    EXPECT_EQ(this->sizeOf(microphone.id, this->inputMute), 4u);
    EXPECT_EQ(this->sizeOf(kAudioObjectSystemObject, this->defaultInput), 4u);

    AudioPropertyValue value = std::string("kept");
    EXPECT_NE(this->hardware().getPropertyData(microphone.id, {kAudioObjectPropertyName}, 7, value), noErr);
    EXPECT_NE(this->hardware().getPropertyData(microphone.id, this->inputMute, 3, value), noErr);
    EXPECT_EQ(value, AudioPropertyValue(std::string("kept")));
    const auto readIDs = [&](std::uint32_t size) {
        return this->hardware().getPropertyData(kAudioObjectSystemObject, {kAudioHardwarePropertyDevices},
                                                size, value);
    };
    EXPECT_EQ(readIDs(4), noErr);
    EXPECT_EQ(value, (AudioPropertyValue(std::vector<std::uint32_t>{ids.front()})));
    EXPECT_EQ(readIDs(400), noErr);
    EXPECT_EQ(value, AudioPropertyValue(ids));
}

TYPED_TEST_P(AudioHardwareContract, MutingIsInForceWhenTheCallReturns) {
    const auto microphone = this->addInput("Desk Microphone");
    const auto speaker = this->addOutput("Hall Speaker");
    const auto other = this->addInput("Room Microphone");
    const struct {
        std::string uid;
        AudioObjectID id;
        AudioObjectPropertyAddress address;
    } cases[] = {{microphone.uid, microphone.id, this->inputMute},
                 {speaker.uid, speaker.id, this->outputMute}};
    for (const auto& [uid, id, address] : cases)
        for (const std::uint32_t mute : {1u, 1u, 0u, 0u}) {
            EXPECT_EQ(this->hardware().setPropertyData(id, address, 4, mute), noErr);
            EXPECT_EQ(this->word(id, address), mute);
            EXPECT_EQ(this->rig.isMutedOnServer(uid), mute == 1);
        }
    EXPECT_FALSE(this->rig.isMutedOnServer(other.uid));
}

TYPED_TEST_P(AudioHardwareContract, OnlyTheMuteFlagOfADeviceCanBeSet) {
    const auto microphone = this->addInput("Desk Microphone");
    const AudioPropertyValue one = std::uint32_t{1};
    const struct {
        const char* what;
        AudioObjectID id;
        AudioObjectPropertyAddress address;
        std::uint32_t size;
        AudioPropertyValue value;
    } cases[] = {
        {"flag of the other side", microphone.id, this->outputMute, 4, one},
        {"device that is not there", 0xfffffff0, this->inputMute, 4, one},
        {"system", kAudioObjectSystemObject, this->inputMute, 4, one},
        {"name", microphone.id, {kAudioObjectPropertyName}, 8, std::string("Other")},
        {"wrong size", microphone.id, this->inputMute, 2, one},
        {"wrong type", microphone.id, this->inputMute, 4, 1.0f},
    };
    for (const auto& [what, id, address, size, value] : cases) {
        SCOPED_TRACE(what);
        EXPECT_NE(this->hardware().setPropertyData(id, address, size, value), noErr);
        EXPECT_FALSE(this->rig.isMutedOnServer(microphone.uid));
        EXPECT_EQ(this->word(microphone.id, this->inputMute), 0u);
        EXPECT_EQ(this->text(microphone.id, kAudioObjectPropertyName), "Desk Microphone");
    }
}

TYPED_TEST_P(AudioHardwareContract, TheDefaultDevicesAreTheServers) {
    const auto microphone = this->addInput("Desk Microphone");
    const auto speaker = this->addOutput("Hall Speaker");
    const auto otherMicrophone = this->addInput("Room Microphone");
    this->rig.setDefaultInput(microphone.uid);
    this->rig.setDefaultOutput(speaker.uid);
    EXPECT_TRUE(this->comesToBe(kAudioObjectSystemObject, this->defaultInput, microphone.id));
    EXPECT_TRUE(this->comesToBe(kAudioObjectSystemObject, this->defaultOutput, speaker.id));
    this->rig.setDefaultInput(otherMicrophone.uid);
    EXPECT_TRUE(this->comesToBe(kAudioObjectSystemObject, this->defaultInput, otherMicrophone.id));
    EXPECT_EQ(this->word(kAudioObjectSystemObject, this->defaultOutput), speaker.id);
}

TYPED_TEST_P(AudioHardwareContract, ListenersHearOfChangesByWhomeverAfterTheyAreInForce) {
    const auto microphone = this->addInput("Desk Microphone");
    const auto other = this->addInput("Room Microphone");
    auto& hardware = this->hardware();
    const auto seen = std::make_shared<const std::function<void()>>(
        [&] { this->told += this->word(microphone.id, this->inputMute) == 1u ? "muted " : "live "; });
    EXPECT_EQ(hardware.addPropertyListener(microphone.id, this->inputMute, seen), noErr);
    EXPECT_EQ(hardware.addPropertyListener(other.id, this->inputMute, this->listener("other")), noErr);

    this->rig.otherProgramSetsMute(microphone.uid, true);
    EXPECT_TRUE(this->tells("muted ")) << this->told;
    EXPECT_TRUE(this->comesToBe(microphone.id, this->inputMute, 1));
    hardware.setPropertyData(microphone.id, this->inputMute, 4, std::uint32_t{0});
    EXPECT_EQ(this->told, "muted ") << "told inside the call";
    EXPECT_TRUE(this->tells("muted live ")) << this->told;
    // What is the same as before is no change; what comes after it would be told after it.
    hardware.setPropertyData(microphone.id, this->inputMute, 4, std::uint32_t{0});
    this->rig.otherProgramSetsMute(other.uid, true);
    EXPECT_TRUE(this->tells("muted live other ")) << this->told;
}

TYPED_TEST_P(AudioHardwareContract, EachRegistrationIsToldOnceAndRemovedOnce) {
    const auto microphone = this->addInput("Desk Microphone");
    auto& hardware = this->hardware();
    const auto twice = this->listener("twice");
    const auto never = this->listener("never");
    for (int count = 0; count < 2; ++count)
        EXPECT_EQ(hardware.addPropertyListener(microphone.id, this->inputMute, twice), noErr);
    this->rig.otherProgramSetsMute(microphone.uid, true);
    EXPECT_TRUE(this->tells("twice twice ")) << this->told;

    EXPECT_NE(hardware.removePropertyListener(microphone.id, this->inputMute, never), noErr);
    EXPECT_NE(hardware.removePropertyListener(microphone.id, this->outputMute, twice), noErr);
    EXPECT_EQ(hardware.removePropertyListener(microphone.id, this->inputMute, twice), noErr);
    this->rig.otherProgramSetsMute(microphone.uid, false);
    EXPECT_TRUE(this->tells("twice twice twice ")) << this->told;

    EXPECT_EQ(hardware.removePropertyListener(microphone.id, this->inputMute, twice), noErr);
    EXPECT_NE(hardware.removePropertyListener(microphone.id, this->inputMute, twice), noErr);
    const auto last = this->listener("last");
    EXPECT_EQ(hardware.addPropertyListener(microphone.id, this->inputMute, last), noErr);
    this->rig.otherProgramSetsMute(microphone.uid, true);
    EXPECT_TRUE(this->tells("twice twice twice last ")) << this->told;

    EXPECT_NE(hardware.addPropertyListener(0xfffffff0, this->inputMute, never), noErr);
    this->rig.removeDevice(microphone.uid);
    EXPECT_TRUE(this->waitUntil([&] { return this->idOf(microphone.uid) == 0; }));
    EXPECT_NE(hardware.removePropertyListener(microphone.id, this->inputMute, last), noErr);
}

REGISTER_TYPED_TEST_SUITE_P(AudioHardwareContract, ADeviceHasAnIdentityAndThePropertiesOfItsSide,
                            TheDirectionOfADeviceIsTheSizeOfItsStreamLists,
                            NumbersStayWithTheirDevicesAndAreNotUsedAgain,
                            AReadTakesTheSizeOfThePropertyAndOfAListWhatFits,
                            MutingIsInForceWhenTheCallReturns, OnlyTheMuteFlagOfADeviceCanBeSet,
                            TheDefaultDevicesAreTheServers,
                            ListenersHearOfChangesByWhomeverAfterTheyAreInForce,
                            EachRegistrationIsToldOnceAndRemovedOnce);

} // namespace tavro
