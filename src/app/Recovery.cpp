#include "app/Recovery.h"

#include "audio/AudioDevice.h"
#include "notifications/DoNotDisturb.h"
#include "platform/applications/Workspace.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/UserDefaults.h"

#include <algorithm>

namespace tavro {

namespace {

void unmuteSpeaker() {
    const auto uid = machine().userDefaults().object(Recovery::speakerKey);
    if (!uid)
        return;
    const auto devices = AudioDevice::allDevices();
    const auto speaker =
        std::ranges::find_if(devices, [&](const auto& device) { return PropertyList(device.uid) == *uid; });
    const std::uint32_t live = 0;
    if (speaker != devices.end() && machine().audioHardware().setPropertyData(
                                        speaker->id, speaker->muteAddress(), sizeof live, live) == noErr)
        Recovery::forgetSpeaker();
}

} // namespace

void Recovery::noteSpeaker() {
    const auto speaker = AudioDevice::defaultDevice(kAudioHardwarePropertyDefaultOutputDevice);
    if (speaker && speaker->mute == false)
        machine().userDefaults().setObject(speakerKey, speaker->uid);
}

void Recovery::forgetSpeaker() {
    if (machine().userDefaults().object(speakerKey))
        machine().userDefaults().removeObject(speakerKey);
}

void Recovery::putRight() {
    machine().workspace().unhideAbandoned();
    DoNotDisturb::disableAbandoned();
    unmuteSpeaker();
}

} // namespace tavro
