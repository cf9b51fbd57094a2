#pragma once

#include "platform/audio/AudioHardware.h"

namespace tavro {

/// What audio objects are asked for.
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
};

} // namespace tavro
