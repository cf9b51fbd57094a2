#pragma once

#include "platform/audio/AudioHardware.h"
#include "platform/simulated/process/Journal.h"
#include "platform/simulated/process/SimulatedMainQueue.h"

#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace tavro {

/// One side of an audio device. Mute flag and volume belong to a side; a side without streams can have them
/// too.
struct SimulatedAudioSide {
    std::uint32_t streams = 0;
    std::optional<bool> mute;
    std::optional<float> volume;
};

/// An audio device as it stands in the machine, apart from its number.
struct SimulatedAudioDevice {
    std::string name;
    std::string uid;
    SimulatedAudioSide input;
    SimulatedAudioSide output;
};

/// The operations that a fault can strike.
enum class AudioCall { getSize, getData, setData, addListener, removeListener };

/// Audio devices that tests plug in and out, and that other programs mute. Changes are in force at once;
/// listeners run on the main queue, for each change of a value, also one that was still registered when the
/// change came and is not any more.
class SimulatedAudioHardware final : public AudioHardware {
public:
    SimulatedAudioHardware(Journal& journal, SimulatedMainQueue& queue);

    OSStatus getPropertyDataSize(AudioObjectID object, const AudioObjectPropertyAddress& address,
                                 std::uint32_t& size) const override;
    OSStatus getPropertyData(AudioObjectID object, const AudioObjectPropertyAddress& address,
                             std::uint32_t size, AudioPropertyValue& value) const override;
    bool hasProperty(AudioObjectID object, const AudioObjectPropertyAddress& address) const override;
    OSStatus setPropertyData(AudioObjectID object, const AudioObjectPropertyAddress& address,
                             std::uint32_t size, const AudioPropertyValue& value) override;
    OSStatus addPropertyListener(AudioObjectID object, const AudioObjectPropertyAddress& address,
                                 AudioPropertyListener listener) override;
    OSStatus removePropertyListener(AudioObjectID object, const AudioObjectPropertyAddress& address,
                                    const AudioPropertyListener& listener) override;

    /// Devices with one stream, a mute flag on its side, and a volume on an output.
    static SimulatedAudioDevice microphone(std::string name);
    static SimulatedAudioDevice speaker(std::string name);
    /// A device is known by its uid. It comes last in the list; it becomes no default by itself.
    AudioObjectID plugIn(SimulatedAudioDevice device);
    /// A default device that goes leaves none.
    void unplug(AudioObjectID device);
    void unplugAll();
    void setDefaultInput(AudioObjectID device) { setDefault(m_defaultInput, device); }
    void setDefaultOutput(AudioObjectID device) { setDefault(m_defaultOutput, device); }
    /// Another program changes the flag of the side that an input device has, else of the output side.
    void otherProgramSetsMute(AudioObjectID device, bool mute);

    const SimulatedAudioDevice& device(AudioObjectID id) const { return m_devices.at(id); }
    /// The flag of the side that an input device has, else of the output side.
    std::optional<bool> isMuted(AudioObjectID device) const;
    /// Zero when there is none.
    AudioObjectID deviceWithUID(const std::string& uid) const;
    /// How many listeners there are on the mute flag of the device's input side.
    std::ptrdiff_t muteListenerCount(AudioObjectID device) const;

    /// Faults: from now on the call gives this status, for this property of this object; `noErr` mends it.
    void fail(AudioCall call, AudioObjectID object, AudioObjectPropertyAddress address, OSStatus status);
    /// A fault: the property's size is said to be this.
    void misreportSize(AudioObjectID object, AudioObjectPropertyAddress address, std::uint32_t size);

    /// Every call so far, one line each, which are forgotten: name, object, selector and scope, and the size
    /// of a read.
    std::vector<std::string> takeCalls();

    /// The process has ended, and took its listeners along.
    void endProcess() { m_listeners.clear(); }

private:
    using Property = std::pair<AudioObjectID, AudioObjectPropertyAddress>;
    struct Registration {
        Property property;
        AudioPropertyListener listener;
    };

    std::optional<AudioPropertyValue> systemProperty(const AudioObjectPropertyAddress& address) const;
    std::optional<AudioPropertyValue> property(AudioObjectID object,
                                               const AudioObjectPropertyAddress& address) const;
    OSStatus check(AudioCall call, AudioObjectID object, const AudioObjectPropertyAddress& address) const;
    std::optional<bool>& muteFlag(AudioObjectID device, std::uint32_t scope);
    void change(std::optional<bool>& flag, bool mute, const Property& property);
    void setDefault(AudioObjectID& role, AudioObjectID device);
    void notify(const Property& property);
    static std::uint32_t muteScope(const SimulatedAudioDevice& device);

    Journal& m_journal;
    SimulatedMainQueue& m_queue;
    mutable Journal m_calls;
    std::map<AudioObjectID, SimulatedAudioDevice> m_devices;
    AudioObjectID m_lastID = 40;
    AudioObjectID m_defaultInput = 0;
    AudioObjectID m_defaultOutput = 0;
    std::vector<Registration> m_listeners;
    std::map<std::tuple<AudioCall, AudioObjectID, AudioObjectPropertyAddress>, OSStatus> m_faults;
    std::map<Property, std::uint32_t> m_misreportedSizes;
};

} // namespace tavro
