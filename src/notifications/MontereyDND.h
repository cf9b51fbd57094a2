#pragma once

#include <nlohmann/json.hpp>

#include <optional>
#include <string>

namespace tavro {

/// Whether the default Do Not Disturb mode is on, from the system's Focus database: JSON files in the user's
/// home folder, read anew each time. What is missing or of another shape counts as off. Main thread only.
class MontereyDND {
public:
    static bool isEnabled();
    /// Somebody has switched it on by hand.
    static bool enabledByAssertion();
    /// One of its schedules covers the present time.
    static bool enabledBySchedule();
    /// None, and a line in the log, when the file cannot be read or is not JSON. A leading tilde stands for
    /// the home folder.
    static std::optional<nlohmann::json> readJSONData(const std::string& path);

    MontereyDND() = delete;
};

} // namespace tavro
