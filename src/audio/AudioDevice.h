#pragma once

#include "platform/audio/AudioHardware.h"
#include "platform/process/Result.h"

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace tavro {

/// An error of the operating system: the status of the call that failed.
struct OSStatusError {
    static constexpr const char* domain = "NSOSStatusErrorDomain";
    std::int64_t code = 0;
    bool operator==(const OSStatusError&) const = default;
};

/// An audio device as it was when the record was made, and what the product asks of the devices of the
/// machine. Nothing here prints, and nothing changes a device. Main thread only.
struct AudioDevice {
    /// Only `invalidDeviceId` is ever given.
    enum class Error {
        invalidDeviceId,
        invalidDevice,
        volumeNotSupported,
        invalidVolumeValue,
        muteNotSupported
    };
    using Failure = std::variant<Error, OSStatusError>;
    using Handler = std::function<void()>;

    AudioObjectID id = 0;
    std::string name;
    std::string uid;
    bool isInput = false;
    bool isOutput = false;
    /// Of the output scope, whatever the direction; none where it cannot be read.
    std::optional<double> volume;
    /// None where there is no mute flag, or it cannot be read.
    std::optional<bool> mute;
    bool operator==(const AudioDevice&) const = default;

    /// Where the mute flag is read and written: on the input side of a device that has one.
    AudioObjectPropertyAddress muteAddress() const;
    /// By the names of the fields. What is absent is not written; the first five have to be there.
    nlohmann::json encoded() const;
    /// None where a field is missing, or not of its type.
    static std::optional<AudioDevice> decode(const nlohmann::json& record);
    /// The record on one line.
    std::string description() const;

    static Result<AudioDevice, Failure> load(AudioObjectID id);
    static Result<std::uint32_t, OSStatusError> propertyDataSize(AudioObjectID object, std::uint32_t selector,
                                                                 std::uint32_t scope, std::uint32_t element);
    /// By the selector of the default input or the default output device.
    static Result<AudioDevice, Failure> defaultDevice(std::uint32_t selector);
    /// In the order of the system. A device that cannot be loaded is left out; none where even the list
    /// cannot be had.
    static std::vector<AudioDevice> allDevices();
    static std::vector<AudioDevice> inputDevices();

    /// Calls the handler, on the main queue, when the input side of the device is muted or unmuted. Returns
    /// what `removeMuteListener` asks for: 0, 1, 2 and so on within a process.
    static int addMuteListener(AudioObjectID id, Handler handler);
    /// A listener that is not there, or not any more, is ignored.
    static void removeMuteListener(AudioObjectID id, int listener);
    /// The same for every input device there is. A position in the list that has a listener gets the new one
    /// in its place, while the device that it was registered at keeps the old one.
    static void addInputDevicesMuteListener(const Handler& handler);
    /// Removes them, matching the positions of the list of now; stops at the first that has none.
    static void removeInputDevicesMuteListener();
};

} // namespace tavro

template <>
struct std::hash<tavro::AudioDevice> {
    std::size_t operator()(const tavro::AudioDevice& device) const noexcept;
};
