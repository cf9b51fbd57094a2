#pragma once

#include "platform/process/OSStatus.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace tavro {

/// An object of the audio system: a device, or the system itself. The number of a device stays with it for
/// as long as it exists, and no later device gets it.
using AudioObjectID = std::uint32_t;
inline constexpr AudioObjectID kAudioObjectSystemObject = 1;

inline constexpr std::uint32_t kAudioObjectPropertyName = fourCharacterCode("lnam");
inline constexpr std::uint32_t kAudioDevicePropertyDeviceUID = fourCharacterCode("uid ");
inline constexpr std::uint32_t kAudioDevicePropertyStreams = fourCharacterCode("stm#");
inline constexpr std::uint32_t kAudioDevicePropertyMute = fourCharacterCode("mute");
inline constexpr std::uint32_t kAudioDevicePropertyVolumeScalar = fourCharacterCode("volm");
inline constexpr std::uint32_t kAudioHardwarePropertyDevices = fourCharacterCode("dev#");
inline constexpr std::uint32_t kAudioHardwarePropertyDefaultInputDevice = fourCharacterCode("dIn ");
inline constexpr std::uint32_t kAudioHardwarePropertyDefaultOutputDevice = fourCharacterCode("dOut");
inline constexpr std::uint32_t kAudioObjectPropertyScopeGlobal = fourCharacterCode("glob");
inline constexpr std::uint32_t kAudioObjectPropertyScopeInput = fourCharacterCode("inpt");
inline constexpr std::uint32_t kAudioObjectPropertyScopeOutput = fourCharacterCode("outp");
inline constexpr std::uint32_t kAudioObjectPropertyElementMain = 0;

// Failures that providers give; the values are the platform's.
inline constexpr OSStatus kAudioHardwareNotRunningError = 0x73746F70;      // 'stop'
inline constexpr OSStatus kAudioHardwareUnknownPropertyError = 0x77686F3F; // 'who?'
inline constexpr OSStatus kAudioHardwareBadPropertySizeError = 0x2173697A; // '!siz'
inline constexpr OSStatus kAudioHardwareBadObjectError = 0x216F626A;       // '!obj'
inline constexpr OSStatus kAudioHardwareUnspecifiedError = 0x77686174;     // 'what'

/// Which property of an object: what it is, of which side of a device, and of which channel. Element 0 stands
/// for all channels together.
struct AudioObjectPropertyAddress {
    std::uint32_t selector = 0;
    std::uint32_t scope = kAudioObjectPropertyScopeGlobal;
    std::uint32_t element = kAudioObjectPropertyElementMain;
    auto operator<=>(const AudioObjectPropertyAddress&) const = default;
};

/// A string property, a 32-bit number, a 32-bit float, or an array of 32-bit numbers.
using AudioPropertyValue = std::variant<std::string, std::uint32_t, float, std::vector<std::uint32_t>>;

/// The bytes of a number, and of an element of an array.
inline constexpr std::uint32_t audioPropertyWordSize = 4;
/// The bytes of a property: 8 for a string (one reference), a word for a number, and for each element of an
/// array.
std::uint32_t sizeOf(const AudioPropertyValue& value);

/// What is called when a property of an object has changed. The platform knows a listener by the very object
/// that was registered.
using AudioPropertyListener = std::shared_ptr<const std::function<void()>>;

/// The properties of the audio system: a provider with the platform's six operations. No call hangs: one that
/// the audio server does not answer in time fails with a status. Listeners run on the main queue, never
/// inside a call of this interface. Main thread only.
class AudioHardware {
public:
    virtual ~AudioHardware() = default;

    /// The bytes of a property; see `sizeOf`.
    virtual OSStatus getPropertyDataSize(AudioObjectID object, const AudioObjectPropertyAddress& address,
                                         std::uint32_t& size) const = 0;
    /// Reads at most `size` bytes' worth into `value`, which keeps what it held on failure. A size that does
    /// not fit the property is a failure; of an array, as many elements as fit are read.
    virtual OSStatus getPropertyData(AudioObjectID object, const AudioObjectPropertyAddress& address,
                                     std::uint32_t size, AudioPropertyValue& value) const = 0;
    /// False also for an object that is not there.
    virtual bool hasProperty(AudioObjectID object, const AudioObjectPropertyAddress& address) const = 0;
    /// Only the mute flag can be set. Success means that the machine has taken it; it is in force, and reads
    /// show it, at once or soon, when listeners hear of it.
    virtual OSStatus setPropertyData(AudioObjectID object, const AudioObjectPropertyAddress& address,
                                     std::uint32_t size, const AudioPropertyValue& value) = 0;
    /// A listener that is registered twice is called twice for each change.
    virtual OSStatus addPropertyListener(AudioObjectID object, const AudioObjectPropertyAddress& address,
                                         AudioPropertyListener listener) = 0;
    /// Removes one registration; one that is not there is a failure without effect.
    virtual OSStatus removePropertyListener(AudioObjectID object, const AudioObjectPropertyAddress& address,
                                            const AudioPropertyListener& listener) = 0;
};

} // namespace tavro
