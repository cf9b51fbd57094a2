#pragma once

namespace tavro {

/// Mutes the default output device of the moment. Nothing is remembered: unmuting does not ask what the
/// device was before, nor which device was muted. Main thread only.
class MuteSpeaker {
public:
    /// A device that is missing, has no mute flag or refuses gives one line in the log.
    static void setMute(bool mute);

    MuteSpeaker() = delete;
};

} // namespace tavro
