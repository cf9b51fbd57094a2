#include "app/Recovery.h"

#include "audio/AudioDevice.h"
#include "notifications/DoNotDisturb.h"
#include "platform/applications/Workspace.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/UserDefaults.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

namespace tavro {

namespace {

struct SpeakerWatch {
    AudioPropertyListener listener;
};

/// The speaker of the note; none where there is no note, or no such speaker now.
std::optional<AudioDevice> notedSpeaker() {
    const auto uid = machine().userDefaults().object(Recovery::speakerKey);
    if (!uid)
        return std::nullopt;
    const auto devices = AudioDevice::allDevices();
    const auto speaker =
        std::ranges::find_if(devices, [&](const auto& device) { return PropertyList(device.uid) == *uid; });
    return speaker == devices.end() ? std::nullopt : std::optional(*speaker);
}

void stopFollowing(const AudioDevice& speaker) {
    if (const auto listener = std::exchange(Process::current().shared<SpeakerWatch>().listener, nullptr))
        machine().audioHardware().removePropertyListener(speaker.id, speaker.muteAddress(), listener);
}

/// Removes the note when its speaker is unmuted, which may be later.
void followSpeaker() {
    const auto speaker = notedSpeaker();
    if (!speaker)
        return;
    auto& listener = Process::current().shared<SpeakerWatch>().listener;
    if (speaker->mute != true) {
        machine().userDefaults().removeObject(Recovery::speakerKey);
        stopFollowing(*speaker);
    } else if (!listener) {
        listener = std::make_shared<const std::function<void()>>(&followSpeaker);
        machine().audioHardware().addPropertyListener(speaker->id, speaker->muteAddress(), listener);
    }
}

void unmuteSpeaker() {
    const std::uint32_t live = 0;
    if (const auto speaker = notedSpeaker())
        machine().audioHardware().setPropertyData(speaker->id, speaker->muteAddress(), sizeof live, live);
    followSpeaker();
}

} // namespace

void Recovery::noteSpeaker(std::function<void()> block) {
    if (const auto noted = notedSpeaker())
        stopFollowing(*noted); // it may be muted again before its unmuting was confirmed
    const auto speaker = AudioDevice::defaultDevice(kAudioHardwarePropertyDefaultOutputDevice);
    if (speaker && speaker->mute == false)
        machine().userDefaults().setObject(speakerKey, speaker->uid);
    machine().userDefaults().whenWritten(std::move(block));
}

void Recovery::forgetSpeaker() {
    followSpeaker();
}

void Recovery::putRight() {
    machine().workspace().unhideAbandoned();
    DoNotDisturb::disableAbandoned();
    unmuteSpeaker();
}

} // namespace tavro
