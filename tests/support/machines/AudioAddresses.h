#pragma once

#include "platform/audio/AudioHardware.h"

namespace tavro {

/// What audio objects are asked for, and how.
struct AudioAddresses {
    using Address = AudioObjectPropertyAddress;
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

    /// An empty value where the call fails.
    template <class T>
    static T read(const AudioHardware& hardware, AudioObjectID object, const Address& address,
                  std::uint32_t size) {
        AudioPropertyValue value;
        return hardware.getPropertyData(object, address, size, value) == noErr ? std::get<T>(value) : T();
    }
    using Words = std::vector<std::uint32_t>;
    static Words devices(const AudioHardware& hardware) {
        return read<Words>(hardware, kAudioObjectSystemObject, deviceList, 4096);
    }
    static std::string uidOf(const AudioHardware& hardware, AudioObjectID device) {
        return read<std::string>(hardware, device, uid, 8);
    }
    /// Zero when no device has this unique identifier.
    static AudioObjectID deviceWithUID(const AudioHardware& hardware, const std::string& wanted) {
        for (const auto device : devices(hardware))
            if (uidOf(hardware, device) == wanted)
                return device;
        return 0;
    }
};

} // namespace tavro
