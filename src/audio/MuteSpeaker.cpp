#include "audio/MuteSpeaker.h"

#include "audio/AudioDevice.h"
#include "platform/process/Log.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"

namespace tavro {

namespace {

bool setDefaultOutputMute(bool mute) {
    const auto device = AudioDevice::defaultDevice(kAudioHardwarePropertyDefaultOutputDevice);
    if (!device || !device->mute)
        return false;
    auto& hardware = machine().audioHardware();
    const std::uint32_t value = mute ? 1 : 0;
    return hardware.setPropertyData(device->id, device->muteAddress(), sizeof(value), value) == noErr;
}

} // namespace

void MuteSpeaker::setMute(bool mute) {
    if (!setDefaultOutputMute(mute))
        machine().log().print("Output audio error");
}

} // namespace tavro
