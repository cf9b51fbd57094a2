#pragma once

namespace tavro {

/// What a presentation leaves when its process ends before it does: noted while it lasts, and put right at
/// the next launch. Main thread only.
class Recovery {
public:
    /// User-defaults key: the unique identifier of the speaker that a presentation has muted.
    static constexpr const char* speakerKey = "speakerFromTavro";

    /// The default speaker is about to be muted. One that is muted already is not ours.
    static void noteSpeaker();
    static void forgetSpeaker();

    /// Brings back the applications that a former process hid, ends the silence that it asked for, and
    /// unmutes the speaker that it muted. What does not work, or not yet, stays noted for the next time.
    static void putRight();

    Recovery() = delete;
};

} // namespace tavro
