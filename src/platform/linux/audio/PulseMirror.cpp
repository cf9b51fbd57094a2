#include "platform/linux/audio/PulseMirror.h"

#include <algorithm>

namespace tavro {

void PulseMirror::connected() {
    clear();
    ask({About::allDevices, Kind::sink, 0});
    ask({About::allDevices, Kind::source, 0});
    ask({About::defaults, Kind::sink, 0});
}

void PulseMirror::disconnected() {
    clear();
}

void PulseMirror::clear() {
    m_pending.clear();
    m_questions.clear();
    m_removedWhileListing.clear();
    m_devices.clear();
    m_places.clear();
    m_hasOtherDevices = true;
    m_defaults = {};
    m_isListed = {};
    m_hasDefaults = false;
}

void PulseMirror::deviceChanged(Kind kind, std::uint32_t index) {
    ask({About::oneDevice, kind, index});
}

// A list that is under way may have been made before.
void PulseMirror::deviceRemoved(Kind kind, std::uint32_t index) {
    m_pending.erase({About::oneDevice, kind, index});
    if (m_pending.contains({About::allDevices, kind, 0}))
        m_removedWhileListing.insert({kind, index});
    erase(kind, index);
}

void PulseMirror::defaultsChanged() {
    ask({About::defaults, Kind::sink, 0});
}

void PulseMirror::ask(const Subject& subject) {
    const auto [pending, isNew] = m_pending.try_emplace(subject);
    if (!isNew) {
        pending->second.asksAgain = true;
        return;
    }
    pending->second.ticket = ++m_lastTicket;
    m_questions.push_back({subject, m_lastTicket});
}

std::vector<PulseQuestion> PulseMirror::takeQuestions() {
    return std::exchange(m_questions, {});
}

bool PulseMirror::accept(const PulseQuestion& question) {
    const auto pending = m_pending.find(question.subject);
    if (pending == m_pending.end() || pending->second.ticket != question.ticket)
        return false;
    const bool asksAgain = pending->second.asksAgain;
    m_pending.erase(pending);
    if (asksAgain)
        ask(question.subject);
    return true;
}

void PulseMirror::answerDefaults(const PulseQuestion& question, PulseDefaults defaults) {
    if (!accept(question))
        return;
    m_defaults = std::move(defaults);
    m_hasOtherDevices |= !std::exchange(m_hasDefaults, true);
}

void PulseMirror::answerAllDevices(const PulseQuestion& question, const std::vector<PulseDevice>& devices) {
    if (!accept(question))
        return;
    const auto kind = question.subject.kind;
    for (const auto& device : devices)
        if (!m_removedWhileListing.contains({kind, device.index}))
            store(device);
    std::erase_if(m_removedWhileListing, [kind](const auto& entry) { return entry.first == kind; });
    m_isListed.at(number(kind)) = true;
    m_hasOtherDevices = true; // they count from the moment on when all are listed
}

void PulseMirror::answerOneDevice(const PulseQuestion& question, const std::optional<PulseDevice>& device) {
    if (!accept(question))
        return;
    if (device)
        store(*device);
    else
        erase(question.subject.kind, question.subject.index);
}

void PulseMirror::confirmMute(AudioObjectID object, bool isMuted) {
    if (const auto found = m_devices.find(object); found != m_devices.end())
        change(object).isMuted = isMuted;
}

// The index may have been another device's, and the name may have been at another index, where an event has
// not arrived yet.
void PulseMirror::store(const PulseDevice& device) {
    const auto object = device.isMonitor ? AudioObjectID{} : identify(device.kind, device.name);
    const auto place = m_places.find({device.kind, device.index});
    if (place != m_places.end() && place->second != object)
        erase(device.kind, device.index);
    if (device.isMonitor)
        return;
    if (const auto before = m_devices.find(object); before == m_devices.end())
        m_hasOtherDevices = true;
    else if (before->second.index != device.index)
        m_places.erase({device.kind, before->second.index});
    change(object) = device;
    m_places[{device.kind, device.index}] = object;
}

PulseDevice& PulseMirror::change(AudioObjectID object) {
    m_changed.insert(object);
    return m_devices[object];
}

void PulseMirror::erase(Kind kind, std::uint32_t index) {
    const auto place = m_places.extract({kind, index});
    if (place.empty())
        return;
    m_devices.erase(place.mapped());
    m_hasOtherDevices = true;
}

AudioObjectID PulseMirror::identify(Kind kind, const std::string& name) {
    const auto next = kAudioObjectSystemObject + 1 + static_cast<AudioObjectID>(m_identities.size());
    return m_identities.try_emplace({kind, name}, next).first->second;
}

bool PulseMirror::isComplete() const {
    return m_isListed.at(number(Kind::sink)) && m_isListed.at(number(Kind::source)) && m_hasDefaults;
}

std::vector<AudioObjectID> PulseMirror::devices() const {
    std::vector<AudioObjectID> numbers;
    if (!isComplete())
        return numbers;
    numbers.reserve(m_devices.size());
    for (const auto& [object, device] : m_devices)
        numbers.push_back(object);
    return numbers;
}

const PulseDevice* PulseMirror::device(AudioObjectID object) const {
    const auto found = m_devices.find(object);
    return isComplete() && found != m_devices.end() ? &found->second : nullptr;
}

AudioObjectID PulseMirror::defaultDevice(Kind kind) const {
    const auto found = m_identities.find({kind, kind == Kind::sink ? m_defaults.sink : m_defaults.source});
    return found != m_identities.end() && device(found->second) ? found->second : 0;
}

std::vector<PulseMirror::Change> PulseMirror::takeChanges() {
    std::vector<Change> changes;
    if (std::exchange(m_hasOtherDevices, false)) {
        auto now = devices();
        if (now != m_toldDevices)
            changes.push_back({kAudioObjectSystemObject, kAudioHardwarePropertyDevices});
        m_toldDevices = std::move(now);
        m_changed.insert(m_toldDevices.begin(), m_toldDevices.end());
    }
    const std::array defaults{defaultDevice(Kind::sink), defaultDevice(Kind::source)};
    if (defaults[0] != m_toldDefaults[0])
        changes.push_back({kAudioObjectSystemObject, kAudioHardwarePropertyDefaultOutputDevice});
    if (defaults[1] != m_toldDefaults[1])
        changes.push_back({kAudioObjectSystemObject, kAudioHardwarePropertyDefaultInputDevice});
    m_toldDefaults = defaults;
    compareProperties(changes);
    return changes;
}

void PulseMirror::compareProperties(std::vector<Change>& changes) {
    if (!isComplete())
        return;
    for (const auto object : std::exchange(m_changed, {})) {
        const auto present = m_devices.find(object);
        if (present == m_devices.end())
            continue;
        const auto& now = present->second;
        const auto [entry, isNew] = m_toldProperties.try_emplace(object, now);
        if (isNew)
            continue;
        const auto before = std::exchange(entry->second, now);
        if (before.description != now.description)
            changes.push_back({object, kAudioObjectPropertyName});
        if (before.isMuted != now.isMuted)
            changes.push_back({object, kAudioDevicePropertyMute});
        if (before.volume != now.volume && now.kind == Kind::sink)
            changes.push_back({object, kAudioDevicePropertyVolumeScalar});
    }
}

} // namespace tavro
