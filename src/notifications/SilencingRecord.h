#pragma once

namespace tavro {

/// What is said of each request to switch Do Not Disturb, and written down. Main thread only.
class SilencingRecord {
public:
    /// User-defaults key: Do Not Disturb has been asked for here. Survives the process, so that the next one
    /// puts right what this one could not.
    static constexpr const char* fromTavroKey = "DNDfromTavro";

    /// The first line of a request, before anything is asked.
    static void begin(bool isOn);
    /// How things stand before it is carried out.
    static void report(bool isEnabled);
    static bool isFromTavro();
    static void setFromTavro(bool isFromTavro);

    SilencingRecord() = delete;
};

} // namespace tavro
