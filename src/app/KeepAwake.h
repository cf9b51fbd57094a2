#pragma once

namespace tavro {

/// The screens stay awake while presenting, unless the user's settings say otherwise. Main thread only.
class KeepAwake {
public:
    /// User-defaults key; true when absent.
    static constexpr const char* key = "keepAwake";

    static void begin();
    /// Whatever the settings say by now.
    static void end();

    KeepAwake() = delete;
};

} // namespace tavro
