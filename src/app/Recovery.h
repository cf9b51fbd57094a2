#pragma once

#include <functional>

namespace tavro {

/// What a presentation leaves when its process ends before it does: noted while it lasts, and put right at
/// the next launch. Main thread only.
class Recovery {
public:
    /// User-defaults key: the unique identifier of the speaker that a presentation has muted.
    static constexpr const char* speakerKey = "speakerFromTavro";

    /// Notes that the default speaker is about to be muted, if it is not yet, and runs the block when the
    /// note is on disk.
    static void noteSpeaker(std::function<void()> block);
    /// Forgets it when the speaker is unmuted, which it has been asked to be.
    static void forgetSpeaker();

    /// Brings back the applications that a former process hid, ends the silence that it asked for, and
    /// unmutes the speaker that it muted. What does not work, or not yet, stays noted for the next time.
    static void putRight();

    Recovery() = delete;
};

} // namespace tavro
