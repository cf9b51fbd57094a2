#include "audio/AudioDevice.h"

#include "platform/process/Machine.h"
#include "platform/process/Process.h"

#include <nlohmann/json.hpp>

#include <map>
#include <memory>
#include <sstream>
#include <utility>

namespace tavro {

namespace {

// Bytes that a property of each type takes; a string is one reference.
constexpr std::uint32_t stringSize = 8;
constexpr std::uint32_t wordSize = 4;

constexpr AudioObjectPropertyAddress inputMute{kAudioDevicePropertyMute, kAudioObjectPropertyScopeInput};

struct MuteListeners {
    int nextListenerID = 0;
    std::map<int, AudioPropertyListener> muteListeners;
    std::map<int, AudioPropertyListener> inputDeviceMuteListeners; // by position in the list of input devices
};

MuteListeners& listeners() {
    return Process::current().shared<MuteListeners>();
}

AudioHardware& hardware() {
    return machine().audioHardware();
}

AudioPropertyListener makeListener(AudioDevice::Handler handler) {
    return std::make_shared<const AudioDevice::Handler>(std::move(handler));
}

template <class Value>
Result<Value, OSStatusError> read(AudioObjectID object, const AudioObjectPropertyAddress& address,
                                  std::uint32_t size) {
    AudioPropertyValue data = Value();
    if (const auto status = hardware().getPropertyData(object, address, size, data))
        return OSStatusError{status};
    if (auto* value = std::get_if<Value>(&data))
        return std::move(*value);
    return OSStatusError{kAudioHardwareBadPropertySizeError};
}

/// The property, or none where it is not there or cannot be read.
template <class Value>
std::optional<Value> readIfPresent(AudioObjectID object, const AudioObjectPropertyAddress& address) {
    if (!hardware().hasProperty(object, address))
        return std::nullopt;
    const auto value = read<Value>(object, address, wordSize);
    return value ? std::optional(*value) : std::nullopt;
}

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\')
            result += '\\';
        result += character;
    }
    return result + '"';
}

template <class Value>
std::string textOf(const std::optional<Value>& value) {
    std::ostringstream text;
    if (value)
        text << std::boolalpha << *value;
    else
        text << "none";
    return text.str();
}

} // namespace

AudioObjectPropertyAddress AudioDevice::muteAddress() const {
    return {kAudioDevicePropertyMute,
            isInput ? kAudioObjectPropertyScopeInput : kAudioObjectPropertyScopeOutput};
}

nlohmann::json AudioDevice::encoded() const {
    nlohmann::json record{
        {"id", id}, {"name", name}, {"uid", uid}, {"isInput", isInput}, {"isOutput", isOutput}};
    if (volume)
        record["volume"] = *volume;
    if (mute)
        record["mute"] = *mute;
    return record;
}

std::optional<AudioDevice> AudioDevice::decode(const nlohmann::json& record) try {
    const auto optional = [&record]<class Value>(const char* key, std::optional<Value>& field) {
        if (const auto value = record.find(key); value != record.end() && !value->is_null())
            field = value->get<Value>();
    };
    if (!record.at("id").is_number_integer() ||
        !std::in_range<AudioObjectID>(record["id"].get<std::int64_t>()))
        return std::nullopt;
    AudioDevice device{record["id"].get<AudioObjectID>(),
                       record.at("name").get<std::string>(),
                       record.at("uid").get<std::string>(),
                       record.at("isInput").get<bool>(),
                       record.at("isOutput").get<bool>(),
                       {},
                       {}};
    optional("volume", device.volume);
    optional("mute", device.mute);
    return device;
} catch (const nlohmann::json::exception&) {
    return std::nullopt;
}

std::string AudioDevice::description() const {
    std::ostringstream text;
    text << std::boolalpha << "AudioDevice(id: " << id << ", name: " << quoted(name)
         << ", uid: " << quoted(uid) << ", isInput: " << isInput << ", isOutput: " << isOutput
         << ", volume: " << textOf(volume) << ", mute: " << textOf(mute) << ')';
    return text.str();
}

// Without a name or an id it is none; without streams it neither records nor plays; without a mute flag or a
// volume it is still there to be listed.
Result<AudioDevice, AudioDevice::Failure> AudioDevice::load(AudioObjectID id) {
    const auto name = read<std::string>(id, {kAudioObjectPropertyName}, stringSize);
    if (!name)
        return Failure(Error::invalidDeviceId);
    const auto uid = read<std::string>(id, {kAudioDevicePropertyDeviceUID}, stringSize);
    if (!uid)
        return Failure(Error::invalidDeviceId);
    const auto inputSize = propertyDataSize(id, kAudioDevicePropertyStreams, kAudioObjectPropertyScopeInput,
                                            kAudioObjectPropertyElementMain);
    if (!inputSize)
        return Failure(inputSize.error());
    const auto outputSize = propertyDataSize(id, kAudioDevicePropertyStreams, kAudioObjectPropertyScopeOutput,
                                             kAudioObjectPropertyElementMain);
    if (!outputSize)
        return Failure(outputSize.error());
    AudioDevice device{id, *name, *uid, *inputSize != 0, *outputSize != 0, std::nullopt, std::nullopt};
    if (const auto mute = readIfPresent<std::uint32_t>(id, device.muteAddress()))
        device.mute = *mute != 0;
    device.volume =
        readIfPresent<float>(id, {kAudioDevicePropertyVolumeScalar, kAudioObjectPropertyScopeOutput});
    return device;
}

Result<std::uint32_t, OSStatusError> AudioDevice::propertyDataSize(AudioObjectID object,
                                                                   std::uint32_t selector,
                                                                   std::uint32_t scope,
                                                                   std::uint32_t element) {
    std::uint32_t size = 0;
    if (const auto status = hardware().getPropertyDataSize(object, {selector, scope, element}, size))
        return OSStatusError{status};
    return size;
}

Result<AudioDevice, AudioDevice::Failure> AudioDevice::defaultDevice(std::uint32_t selector) {
    const auto id = read<AudioObjectID>(kAudioObjectSystemObject, {selector}, wordSize);
    if (!id)
        return Failure(id.error());
    return load(*id);
}

// One that is unplugged between the two questions is left out.
std::vector<AudioDevice> AudioDevice::allDevices() {
    const auto size = propertyDataSize(kAudioObjectSystemObject, kAudioHardwarePropertyDevices,
                                       kAudioObjectPropertyScopeGlobal, kAudioObjectPropertyElementMain);
    const auto count = size ? *size / wordSize : 0;
    if (count == 0)
        return {};
    const auto ids = read<std::vector<AudioObjectID>>(kAudioObjectSystemObject,
                                                      {kAudioHardwarePropertyDevices}, count * wordSize);
    std::vector<AudioDevice> devices;
    if (ids)
        for (const auto id : *ids)
            if (const auto device = load(id))
                devices.push_back(*device);
    return devices;
}

std::vector<AudioDevice> AudioDevice::inputDevices() {
    auto devices = allDevices();
    std::erase_if(devices, [](const auto& device) { return !device.isInput; });
    return devices;
}

int AudioDevice::addMuteListener(AudioObjectID id, Handler handler) {
    const auto listener = listeners().nextListenerID++;
    const auto& entry = listeners().muteListeners[listener] = makeListener(std::move(handler));
    hardware().addPropertyListener(id, inputMute, entry);
    return listener;
}

void AudioDevice::removeMuteListener(AudioObjectID id, int listener) {
    if (const auto entry = listeners().muteListeners.extract(listener))
        hardware().removePropertyListener(id, inputMute, entry.mapped());
}

// By position in the list, which is how the removal finds them again.
void AudioDevice::addInputDevicesMuteListener(const Handler& handler) {
    int position = 0;
    for (const auto& device : inputDevices()) {
        const auto& entry = listeners().inputDeviceMuteListeners[position++] = makeListener(handler);
        hardware().addPropertyListener(device.id, inputMute, entry);
    }
}

void AudioDevice::removeInputDevicesMuteListener() {
    int position = 0;
    for (const auto& device : inputDevices()) {
        const auto entry = listeners().inputDeviceMuteListeners.extract(position++);
        if (!entry)
            return;
        hardware().removePropertyListener(device.id, inputMute, entry.mapped());
    }
}

} // namespace tavro

std::size_t std::hash<tavro::AudioDevice>::operator()(const tavro::AudioDevice& device) const noexcept {
    std::size_t seed = 0;
    const auto combine = [&seed](const auto& field) {
        const std::hash<std::decay_t<decltype(field)>> hashOf;
        seed ^= hashOf(field) + 0x9e3779b97f4a7c15 + (seed << 6) + (seed >> 2);
    };
    combine(device.id);
    combine(device.name);
    combine(device.uid);
    combine(device.isInput);
    combine(device.isOutput);
    combine(device.volume);
    combine(device.mute);
    return seed;
}
