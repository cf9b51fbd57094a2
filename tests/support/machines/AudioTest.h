#pragma once

#include "support/machines/Launch.h"

#include "audio/AudioDevice.h"

namespace tavro {

/// A test on a machine without audio devices at first, in a process of its own.
class AudioTest : public SimulatedMacTest {
protected:
    using Audio = SimulatedAudioHardware;
    using Address = AudioObjectPropertyAddress;

    AudioTest() {
        audio.unplugAll();
        mac.mainQueue().runUntilIdle();
        mac.journal().clear();
    }

    AudioObjectID plugInMicrophone(const std::string& name, std::optional<bool> mute = false) {
        auto device = Audio::microphone(name);
        device.input.mute = mute;
        return audio.plugIn(std::move(device));
    }
    AudioObjectID plugInSpeaker(const std::string& name, std::optional<bool> mute = false) {
        auto device = Audio::speaker(name);
        device.output.mute = mute;
        return audio.plugIn(std::move(device));
    }
    /// Both sides have streams and a mute flag.
    AudioObjectID plugInHeadset(const std::string& name) {
        auto device = Audio::speaker(name);
        device.input = Audio::microphone(name).input;
        return audio.plugIn(std::move(device));
    }
    Lines writes() { return mac.journal().lines("audioHardware.setPropertyData"); }

    static constexpr Address name{kAudioObjectPropertyName};
    static constexpr Address uid{kAudioDevicePropertyDeviceUID};
    static constexpr Address inputStreams{kAudioDevicePropertyStreams, kAudioObjectPropertyScopeInput};
    static constexpr Address outputStreams{kAudioDevicePropertyStreams, kAudioObjectPropertyScopeOutput};
    static constexpr Address inputMute{kAudioDevicePropertyMute, kAudioObjectPropertyScopeInput};
    static constexpr Address outputMute{kAudioDevicePropertyMute, kAudioObjectPropertyScopeOutput};
    static constexpr Address outputVolume{kAudioDevicePropertyVolumeScalar, kAudioObjectPropertyScopeOutput};
    static constexpr Address deviceList{kAudioHardwarePropertyDevices};
    static constexpr Address defaultInput{kAudioHardwarePropertyDefaultInputDevice};
    static constexpr Address defaultOutput{kAudioHardwarePropertyDefaultOutputDevice};

    Process process{mac};
    SimulatedAudioHardware& audio = mac.audioHardware();
};

} // namespace tavro
