#include "audio/MuteMic.h"

#include "audio/AudioDevice.h"
#include "platform/process/Log.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"

#include <algorithm>

namespace tavro {

namespace {

constexpr int notObserving = -1;

struct MuteObservation {
    int listenerID = notObserving;
};

int& observedListener() {
    return Process::current().shared<MuteObservation>().listenerID;
}

Result<AudioDevice, AudioDevice::Failure> defaultInput() {
    auto device = AudioDevice::defaultDevice(kAudioHardwarePropertyDefaultInputDevice);
    if (!device)
        machine().log().print("Listener error");
    return device;
}

} // namespace

// A device without a mute flag cannot be muted, and must not keep the indicator on "live" for ever.
bool MuteMic::isMuted() {
    return std::ranges::all_of(AudioDevice::inputDevices(),
                               [](const auto& device) { return device.mute.value_or(true); });
}

// Every device gets its turn: one that refuses must not leave those after it live.
void MuteMic::setMute(bool mute) {
    const std::uint32_t value = mute ? 1 : 0;
    for (const auto& device : AudioDevice::inputDevices())
        if (device.mute && machine().audioHardware().setPropertyData(device.id, device.muteAddress(),
                                                                     sizeof(value), value) != noErr)
            machine().log().print("Input audio error: " + device.description());
}

// Once however often it is called, or the handler would run several times a change and only the last listener
// could be removed.
void MuteMic::startObserving(const std::function<void()>& handler) {
    if (listenerID() >= 0)
        return;
    if (const auto device = defaultInput())
        observedListener() = AudioDevice::addMuteListener(device->id, handler);
    AudioDevice::addInputDevicesMuteListener(handler);
}

void MuteMic::stopObserving() {
    if (const auto device = defaultInput()) {
        AudioDevice::removeMuteListener(device->id, listenerID());
        observedListener() = notObserving;
    }
    AudioDevice::removeInputDevicesMuteListener();
}

int MuteMic::listenerID() {
    return observedListener();
}

} // namespace tavro
