#include "platform/linux/audio/PulseAudioHardware.h"

#include "platform/process/MainQueue.h"

#include <algorithm>

namespace tavro {

namespace {

using Clock = PulseConnection::Clock;

std::uint32_t directionOf(const PulseDevice& device) {
    return device.kind == PulseDeviceKind::sink ? kAudioObjectPropertyScopeOutput
                                                : kAudioObjectPropertyScopeInput;
}

std::optional<AudioPropertyValue> globalProperty(const PulseDevice& device, std::uint32_t selector) {
    switch (selector) {
    case kAudioObjectPropertyName:
        return device.description;
    case kAudioDevicePropertyDeviceUID:
        return device.name;
    default:
        return std::nullopt;
    }
}

/// A device has one stream, which is the device itself.
std::optional<AudioPropertyValue> streams(const PulseDevice& device, AudioObjectID object,
                                          std::uint32_t scope) {
    if (scope == directionOf(device))
        return std::vector{object};
    return std::vector<std::uint32_t>();
}

std::optional<AudioPropertyValue> deviceProperty(const PulseDevice& device, AudioObjectID object,
                                                 const AudioObjectPropertyAddress& address) {
    if (address.element != kAudioObjectPropertyElementMain)
        return std::nullopt;
    if (address.scope == kAudioObjectPropertyScopeGlobal)
        return globalProperty(device, address.selector);
    if (address.scope != kAudioObjectPropertyScopeInput && address.scope != kAudioObjectPropertyScopeOutput)
        return std::nullopt;
    if (address.selector == kAudioDevicePropertyStreams)
        return streams(device, object, address.scope);
    if (address.scope != directionOf(device))
        return std::nullopt;
    if (address.selector == kAudioDevicePropertyMute)
        return std::uint32_t{device.isMuted};
    if (address.selector == kAudioDevicePropertyVolumeScalar && device.kind == PulseDeviceKind::sink)
        return device.volume;
    return std::nullopt;
}

} // namespace

PulseAudioHardware::PulseAudioHardware(MainQueue& queue, Log& log, Waits waits)
    : m_queue(queue)
    , m_waits(waits)
    , m_connection(m_mirror, log, waits.retry, [this] { mirrorChanged(); }) {}

void PulseAudioHardware::waitAtFirst() const {
    if (!std::exchange(m_hasWaited, true))
        m_connection.waitForListing(Clock::now() + m_waits.first);
}

OSStatus PulseAudioHardware::findObject(AudioObjectID object) const {
    waitAtFirst();
    if (object == kAudioObjectSystemObject)
        return m_mirror.isComplete() ? noErr : kAudioHardwareNotRunningError;
    return m_mirror.device(object) ? noErr : kAudioHardwareBadObjectError;
}

std::optional<AudioPropertyValue>
PulseAudioHardware::systemProperty(const AudioObjectPropertyAddress& address) const {
    if (address == AudioObjectPropertyAddress{kAudioHardwarePropertyDevices})
        return m_mirror.devices();
    if (address == AudioObjectPropertyAddress{kAudioHardwarePropertyDefaultInputDevice})
        return m_mirror.defaultDevice(PulseDeviceKind::source);
    if (address == AudioObjectPropertyAddress{kAudioHardwarePropertyDefaultOutputDevice})
        return m_mirror.defaultDevice(PulseDeviceKind::sink);
    return std::nullopt;
}

OSStatus PulseAudioHardware::read(AudioObjectID object, const AudioObjectPropertyAddress& address,
                                  AudioPropertyValue& value) const {
    if (const auto status = findObject(object))
        return status;
    auto found = object == kAudioObjectSystemObject
                     ? systemProperty(address)
                     : deviceProperty(*m_mirror.device(object), object, address);
    if (!found)
        return kAudioHardwareUnknownPropertyError;
    value = std::move(*found);
    return noErr;
}

OSStatus PulseAudioHardware::getPropertyDataSize(AudioObjectID object,
                                                 const AudioObjectPropertyAddress& address,
                                                 std::uint32_t& size) const {
    AudioPropertyValue value;
    const auto status = read(object, address, value);
    if (status == noErr)
        size = sizeOf(value);
    return status;
}

OSStatus PulseAudioHardware::getPropertyData(AudioObjectID object, const AudioObjectPropertyAddress& address,
                                             std::uint32_t size, AudioPropertyValue& value) const {
    AudioPropertyValue found;
    if (const auto status = read(object, address, found))
        return status;
    // The platform cuts a list to the room that there is, and refuses all else that does not fit exactly.
    if (auto* words = std::get_if<std::vector<std::uint32_t>>(&found))
        words->resize(std::min<std::size_t>(words->size(), size / audioPropertyWordSize));
    else if (size != sizeOf(found))
        return kAudioHardwareBadPropertySizeError;
    value = std::move(found);
    return noErr;
}

bool PulseAudioHardware::hasProperty(AudioObjectID object, const AudioObjectPropertyAddress& address) const {
    AudioPropertyValue ignored;
    return read(object, address, ignored) == noErr;
}

OSStatus PulseAudioHardware::setPropertyData(AudioObjectID object, const AudioObjectPropertyAddress& address,
                                             std::uint32_t size, const AudioPropertyValue& value) {
    AudioPropertyValue present;
    if (const auto status = read(object, address, present))
        return status;
    if (address.selector != kAudioDevicePropertyMute)
        return kAudioHardwareUnspecifiedError;
    const auto* word = std::get_if<std::uint32_t>(&value);
    if (size != audioPropertyWordSize || !word)
        return kAudioHardwareBadPropertySizeError;
    return m_connection.setMute(object, *m_mirror.device(object), *word != 0);
}

OSStatus PulseAudioHardware::addPropertyListener(AudioObjectID object,
                                                 const AudioObjectPropertyAddress& address,
                                                 AudioPropertyListener listener) {
    if (const auto status = findObject(object))
        return status;
    m_listeners.push_back({++m_lastRegistration, object, address, std::move(listener)});
    return noErr;
}

OSStatus PulseAudioHardware::removePropertyListener(AudioObjectID object,
                                                    const AudioObjectPropertyAddress& address,
                                                    const AudioPropertyListener& listener) {
    const auto found = std::ranges::find_if(m_listeners, [&](const auto& registration) {
        return registration.object == object && registration.address == address &&
               registration.listener == listener;
    });
    if (found == m_listeners.end())
        return kAudioHardwareUnspecifiedError;
    m_listeners.erase(found);
    return findObject(object);
}

void PulseAudioHardware::finish() {
    m_connection.waitForAnswers(Clock::now() + m_waits.finish);
}

AudioObjectPropertyAddress PulseAudioHardware::addressOf(const PulseMirror::Change& change) const {
    const bool isOfASide =
        change.selector == kAudioDevicePropertyMute || change.selector == kAudioDevicePropertyVolumeScalar;
    return {change.selector,
            isOfASide ? directionOf(*m_mirror.device(change.object)) : kAudioObjectPropertyScopeGlobal};
}

void PulseAudioHardware::mirrorChanged() {
    const bool isQueued = !m_calls.empty();
    for (const auto& change : m_mirror.takeChanges()) {
        const auto address = addressOf(change);
        for (const auto& registration : m_listeners)
            if (registration.object == change.object && registration.address == address)
                // By number: the listener may be removed before its turn comes.
                m_calls.push_back(registration.number);
    }
    if (!isQueued && !m_calls.empty())
        m_queue.async([this] { callListeners(); });
}

// A listener may remove any, itself too, and may change what it was notified of.
void PulseAudioHardware::callListeners() {
    for (const auto number : std::exchange(m_calls, {})) {
        const auto registration = std::ranges::find(m_listeners, number, &Registration::number);
        if (registration == m_listeners.end())
            continue;
        const auto listener = registration->listener;
        (*listener)();
    }
}

} // namespace tavro
