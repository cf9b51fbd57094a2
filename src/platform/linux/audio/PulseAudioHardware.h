#pragma once

#include "platform/audio/AudioHardware.h"
#include "platform/linux/audio/PulseConnection.h"
#include "platform/linux/audio/PulseMirror.h"

#include <chrono>
#include <optional>
#include <vector>

namespace tavro {

class Log;
class MainQueue;

/// The devices of a PulseAudio server, or of one that speaks its protocol: sinks are outputs, sources other
/// than monitors are inputs.
///
/// - Reads answer from a mirror. Only the very first call may wait, and only while a server is being
///   connected to, so that a program which asks at launch sees the devices.
/// - Writes are sent and not waited for. The mirror shows one, and its listeners hear of it, when the server
///   has confirmed it.
/// - A device is the one of its kind and server name. It keeps its number and its listeners while it is away,
///   unplugged or with its server; on its return they are notified if it differs from before.
/// - Without a server there is no property of the system to read, and there are no devices.
class PulseAudioHardware final : public AudioHardware {
public:
    /// What is waited for at the most, and how long after the first attempt to connect the next one comes.
    struct Waits {
        std::chrono::milliseconds first{300}, finish{500}, retry{1000};
    };

    PulseAudioHardware(MainQueue& queue, Log& log, Waits waits);
    PulseAudioHardware(MainQueue& queue, Log& log)
        : PulseAudioHardware(queue, log, Waits{}) {}

    OSStatus getPropertyDataSize(AudioObjectID object, const AudioObjectPropertyAddress& address,
                                 std::uint32_t& size) const override;
    OSStatus getPropertyData(AudioObjectID object, const AudioObjectPropertyAddress& address,
                             std::uint32_t size, AudioPropertyValue& value) const override;
    bool hasProperty(AudioObjectID object, const AudioObjectPropertyAddress& address) const override;
    OSStatus setPropertyData(AudioObjectID object, const AudioObjectPropertyAddress& address,
                             std::uint32_t size, const AudioPropertyValue& value) override;
    OSStatus addPropertyListener(AudioObjectID object, const AudioObjectPropertyAddress& address,
                                 AudioPropertyListener listener) override;
    /// From now on the listener is not called, whatever has changed before. Also of a device that is away,
    /// whose status it gives.
    OSStatus removePropertyListener(AudioObjectID object, const AudioObjectPropertyAddress& address,
                                    const AudioPropertyListener& listener) override;

    /// Waits until the server has confirmed what was sent; for the end of the process.
    void finish();

private:
    struct Registration {
        std::uint64_t number = 0;
        AudioObjectID object = 0;
        AudioObjectPropertyAddress address;
        AudioPropertyListener listener;
    };

    void waitAtFirst() const;
    OSStatus findObject(AudioObjectID object) const;
    OSStatus read(AudioObjectID object, const AudioObjectPropertyAddress& address,
                  AudioPropertyValue& value) const;
    std::optional<AudioPropertyValue> systemProperty(const AudioObjectPropertyAddress& address) const;
    void mirrorChanged();
    AudioObjectPropertyAddress addressOf(const PulseMirror::Change& change) const;
    void callListeners();

    MainQueue& m_queue;
    const Waits m_waits;
    PulseMirror m_mirror;
    mutable bool m_hasWaited = false;
    std::vector<Registration> m_listeners;
    std::uint64_t m_lastRegistration = 0;
    std::vector<std::uint64_t> m_calls;   // numbers of registrations, in order
    mutable PulseConnection m_connection; // the last: it reports changes from its construction on
};

} // namespace tavro
