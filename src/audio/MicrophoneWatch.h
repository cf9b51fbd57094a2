#pragma once

#include "platform/audio/AudioHardware.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace tavro {

/// Tells of each change that may change what `MuteMic::isMuted` says, microphones that come and go included,
/// for as long as it lives. Unlike the observation of a presentation, any number may stand side by side.
class MicrophoneWatch {
public:
    explicit MicrophoneWatch(std::function<void()> changed);
    MicrophoneWatch(const MicrophoneWatch&) = delete;
    MicrophoneWatch& operator=(const MicrophoneWatch&) = delete;
    ~MicrophoneWatch();

private:
    using Property = std::pair<AudioObjectID, AudioObjectPropertyAddress>;

    void watchFlags();
    void forgetFlags();

    AudioHardware& m_hardware;
    const std::shared_ptr<std::vector<Property>> m_flags = std::make_shared<std::vector<Property>>();
    const AudioPropertyListener m_flagChanged, m_devicesChanged;
};

} // namespace tavro
