#pragma once

#include "AudioAddresses.h"
#include "Launch.h"

#include "audio/AudioDevice.h"

namespace tavro {

/// A test on a machine without audio devices at first, in a process of its own.
class AudioTest : public SimulatedMacTest, protected AudioAddresses {
protected:
    using Audio = SimulatedAudioHardware;

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

    Process process{mac};
    SimulatedAudioHardware& audio = mac.audioHardware();
};

} // namespace tavro
