#include "audio/MicrophoneWatch.h"

#include "audio/AudioDevice.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"

namespace tavro {

namespace {

constexpr AudioObjectPropertyAddress devices{kAudioHardwarePropertyDevices};

AudioPropertyListener listener(std::function<void()> block) {
    return std::make_shared<const std::function<void()>>(std::move(block));
}

} // namespace

MicrophoneWatch::MicrophoneWatch(std::function<void()> changed)
    : m_hardware(machine().audioHardware())
    , m_flagChanged(listener(std::move(changed)))
    , m_devicesChanged(listener([this, flags = std::weak_ptr(m_flags)] {
        if (flags.expired()) // the change came before the end of this
            return;
        watchFlags();
        (*m_flagChanged)();
    })) {
    m_hardware.addPropertyListener(kAudioObjectSystemObject, devices, m_devicesChanged);
    watchFlags();
}

MicrophoneWatch::~MicrophoneWatch() {
    m_hardware.removePropertyListener(kAudioObjectSystemObject, devices, m_devicesChanged);
    forgetFlags();
}

void MicrophoneWatch::watchFlags() {
    forgetFlags();
    for (const auto& device : AudioDevice::inputDevices())
        if (m_hardware.addPropertyListener(device.id, device.muteAddress(), m_flagChanged) == noErr)
            m_flags->emplace_back(device.id, device.muteAddress());
}

// A device that is gone has none any more, which is as well.
void MicrophoneWatch::forgetFlags() {
    for (const auto& [device, address] : *m_flags)
        m_hardware.removePropertyListener(device, address, m_flagChanged);
    m_flags->clear();
}

} // namespace tavro
