#include "platform/simulated/audio/SimulatedAudioHardware.h"

#include <algorithm>

namespace tavro {

namespace {

std::string text(std::uint32_t code) {
    std::string characters;
    for (const int shift : {24, 16, 8, 0})
        characters += static_cast<char>(code >> shift & 0xff);
    return characters;
}

const SimulatedAudioSide* sideOf(const SimulatedAudioDevice& device, std::uint32_t scope) {
    if (scope == kAudioObjectPropertyScopeInput)
        return &device.input;
    return scope == kAudioObjectPropertyScopeOutput ? &device.output : nullptr;
}

std::optional<AudioPropertyValue> sideProperty(const SimulatedAudioSide& side, std::uint32_t selector) {
    if (selector == kAudioDevicePropertyStreams)
        return std::vector<std::uint32_t>(side.streams);
    if (selector == kAudioDevicePropertyMute && side.mute)
        return std::uint32_t{*side.mute};
    if (selector == kAudioDevicePropertyVolumeScalar && side.volume)
        return *side.volume;
    return std::nullopt;
}

} // namespace

SimulatedAudioHardware::SimulatedAudioHardware(Journal& journal, SimulatedMainQueue& queue)
    : m_journal(journal)
    , m_queue(queue) {}

OSStatus SimulatedAudioHardware::getPropertyDataSize(AudioObjectID object,
                                                     const AudioObjectPropertyAddress& address,
                                                     std::uint32_t& size) const {
    m_calls.record("getPropertyDataSize", object, text(address.selector), text(address.scope));
    if (const auto status = check(AudioCall::getSize, object, address))
        return status;
    const auto misreported = m_misreportedSizes.find({object, address});
    size = misreported == m_misreportedSizes.end() ? sizeOf(*property(object, address)) : misreported->second;
    return noErr;
}

OSStatus SimulatedAudioHardware::getPropertyData(AudioObjectID object,
                                                 const AudioObjectPropertyAddress& address,
                                                 std::uint32_t size, AudioPropertyValue& value) const {
    m_calls.record("getPropertyData", object, text(address.selector), text(address.scope), size);
    if (const auto status = check(AudioCall::getData, object, address))
        return status;
    auto current = *property(object, address);
    if (auto* words = std::get_if<std::vector<std::uint32_t>>(&current))
        words->resize(std::min<std::size_t>(words->size(), size / audioPropertyWordSize));
    else if (size != sizeOf(current))
        return kAudioHardwareBadPropertySizeError;
    value = std::move(current);
    return noErr;
}

bool SimulatedAudioHardware::hasProperty(AudioObjectID object,
                                         const AudioObjectPropertyAddress& address) const {
    m_calls.record("hasProperty", object, text(address.selector), text(address.scope));
    return property(object, address).has_value();
}

OSStatus SimulatedAudioHardware::setPropertyData(AudioObjectID object,
                                                 const AudioObjectPropertyAddress& address,
                                                 std::uint32_t size, const AudioPropertyValue& value) {
    const auto* word = std::get_if<std::uint32_t>(&value);
    m_calls.record("setPropertyData", object, text(address.selector), text(address.scope));
    m_journal.record("audioHardware.setPropertyData", object, text(address.selector), text(address.scope),
                     word ? std::to_string(*word) : "(no number)");
    if (const auto status = check(AudioCall::setData, object, address))
        return status;
    if (address.selector != kAudioDevicePropertyMute)
        return kAudioHardwareUnspecifiedError;
    if (size != audioPropertyWordSize || !word)
        return kAudioHardwareBadPropertySizeError;
    change(muteFlag(object, address.scope), *word != 0, {object, address});
    return noErr;
}

OSStatus SimulatedAudioHardware::addPropertyListener(AudioObjectID object,
                                                     const AudioObjectPropertyAddress& address,
                                                     AudioPropertyListener listener) {
    m_calls.record("addPropertyListener", object, text(address.selector), text(address.scope));
    m_journal.record("audioHardware.addPropertyListener", object, text(address.selector),
                     text(address.scope));
    if (const auto status = check(AudioCall::addListener, object, address))
        return status;
    m_listeners.push_back({{object, address}, std::move(listener)});
    return noErr;
}

OSStatus SimulatedAudioHardware::removePropertyListener(AudioObjectID object,
                                                        const AudioObjectPropertyAddress& address,
                                                        const AudioPropertyListener& listener) {
    m_calls.record("removePropertyListener", object, text(address.selector), text(address.scope));
    m_journal.record("audioHardware.removePropertyListener", object, text(address.selector),
                     text(address.scope));
    if (const auto status = check(AudioCall::removeListener, object, address))
        return status;
    const auto entry = std::ranges::find_if(m_listeners, [&](const auto& registration) {
        return registration.property == Property(object, address) && registration.listener == listener;
    });
    if (entry == m_listeners.end())
        return kAudioHardwareUnspecifiedError;
    m_listeners.erase(entry);
    return noErr;
}

SimulatedAudioDevice SimulatedAudioHardware::microphone(std::string name) {
    auto uid = "uid of " + name;
    return {std::move(name), std::move(uid), {1, false, std::nullopt}, {}};
}

SimulatedAudioDevice SimulatedAudioHardware::speaker(std::string name) {
    auto uid = "uid of " + name;
    return {std::move(name), std::move(uid), {}, {1, false, 0.5f}};
}

AudioObjectID SimulatedAudioHardware::plugIn(SimulatedAudioDevice device) {
    m_devices.emplace(++m_lastID, std::move(device));
    notify({kAudioObjectSystemObject, {kAudioHardwarePropertyDevices}});
    return m_lastID;
}

void SimulatedAudioHardware::unplug(AudioObjectID device) {
    m_devices.erase(device);
    std::erase_if(m_listeners, [&](const auto& entry) { return entry.property.first == device; });
    notify({kAudioObjectSystemObject, {kAudioHardwarePropertyDevices}});
    for (auto* role : {&m_defaultInput, &m_defaultOutput})
        if (*role == device)
            setDefault(*role, 0);
}

void SimulatedAudioHardware::unplugAll() {
    while (!m_devices.empty())
        unplug(m_devices.begin()->first);
}

void SimulatedAudioHardware::otherProgramSetsMute(AudioObjectID device, bool mute) {
    const auto scope = muteScope(m_devices.at(device));
    change(muteFlag(device, scope), mute, {device, {kAudioDevicePropertyMute, scope}});
}

std::optional<bool> SimulatedAudioHardware::isMuted(AudioObjectID device) const {
    const auto& found = m_devices.at(device);
    return sideOf(found, muteScope(found))->mute;
}

AudioObjectID SimulatedAudioHardware::deviceWithUID(const std::string& uid) const {
    for (const auto& [id, device] : m_devices)
        if (device.uid == uid)
            return id;
    return 0;
}

std::ptrdiff_t SimulatedAudioHardware::muteListenerCount(AudioObjectID device) const {
    const Property property(device, {kAudioDevicePropertyMute, kAudioObjectPropertyScopeInput});
    return std::ranges::count(m_listeners, property, &Registration::property);
}

void SimulatedAudioHardware::fail(AudioCall call, AudioObjectID object, AudioObjectPropertyAddress address,
                                  OSStatus status) {
    m_faults[{call, object, address}] = status;
}

void SimulatedAudioHardware::misreportSize(AudioObjectID object, AudioObjectPropertyAddress address,
                                           std::uint32_t size) {
    m_misreportedSizes[{object, address}] = size;
}

std::vector<std::string> SimulatedAudioHardware::takeCalls() {
    auto calls = m_calls.lines();
    m_calls.clear();
    return calls;
}

std::optional<AudioPropertyValue>
SimulatedAudioHardware::systemProperty(const AudioObjectPropertyAddress& address) const {
    if (address == AudioObjectPropertyAddress{kAudioHardwarePropertyDevices}) {
        std::vector<AudioObjectID> ids;
        for (const auto& entry : m_devices)
            ids.push_back(entry.first);
        return ids;
    }
    if (address == AudioObjectPropertyAddress{kAudioHardwarePropertyDefaultInputDevice})
        return m_defaultInput;
    if (address == AudioObjectPropertyAddress{kAudioHardwarePropertyDefaultOutputDevice})
        return m_defaultOutput;
    return std::nullopt;
}

std::optional<AudioPropertyValue>
SimulatedAudioHardware::property(AudioObjectID object, const AudioObjectPropertyAddress& address) const {
    if (address.element != kAudioObjectPropertyElementMain)
        return std::nullopt;
    if (object == kAudioObjectSystemObject)
        return systemProperty(address);
    const auto device = m_devices.find(object);
    if (device == m_devices.end())
        return std::nullopt;
    if (address == AudioObjectPropertyAddress{kAudioObjectPropertyName})
        return device->second.name;
    if (address == AudioObjectPropertyAddress{kAudioDevicePropertyDeviceUID})
        return device->second.uid;
    const auto* side = sideOf(device->second, address.scope);
    return side ? sideProperty(*side, address.selector) : std::nullopt;
}

OSStatus SimulatedAudioHardware::check(AudioCall call, AudioObjectID object,
                                       const AudioObjectPropertyAddress& address) const {
    if (const auto fault = m_faults.find({call, object, address}); fault != m_faults.end())
        if (fault->second != noErr)
            return fault->second;
    if (object != kAudioObjectSystemObject && !m_devices.contains(object))
        return kAudioHardwareBadObjectError;
    const bool concernsListeners = call == AudioCall::addListener || call == AudioCall::removeListener;
    return concernsListeners || property(object, address) ? noErr : kAudioHardwareUnknownPropertyError;
}

std::optional<bool>& SimulatedAudioHardware::muteFlag(AudioObjectID device, std::uint32_t scope) {
    auto& found = m_devices.at(device);
    return scope == kAudioObjectPropertyScopeInput ? found.input.mute : found.output.mute;
}

void SimulatedAudioHardware::change(std::optional<bool>& flag, bool mute, const Property& property) {
    if (flag == mute)
        return;
    flag = mute;
    notify(property);
}

void SimulatedAudioHardware::setDefault(AudioObjectID& role, AudioObjectID device) {
    if (role == device)
        return;
    role = device;
    const auto selector = &role == &m_defaultInput ? kAudioHardwarePropertyDefaultInputDevice
                                                   : kAudioHardwarePropertyDefaultOutputDevice;
    notify({kAudioObjectSystemObject, {selector}});
}

void SimulatedAudioHardware::notify(const Property& property) {
    for (const auto& registration : m_listeners)
        if (registration.property == property)
            m_queue.async([listener = registration.listener] { (*listener)(); });
}

std::uint32_t SimulatedAudioHardware::muteScope(const SimulatedAudioDevice& device) {
    return device.input.streams > 0 ? kAudioObjectPropertyScopeInput : kAudioObjectPropertyScopeOutput;
}

} // namespace tavro
