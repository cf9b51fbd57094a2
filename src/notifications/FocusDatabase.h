#pragma once

#include "platform/process/Result.h"

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace tavro {

/// What the files of the system's Focus database say. Any value may be given: what does not have the shape
/// that is looked for says no.
namespace FocusDatabase {

/// A JSON object or array (RFC 8259), or a description of why it is none.
Result<nlohmann::json, std::string> parse(std::string_view bytes);

/// Whether the assertions file holds a record.
bool hasAssertion(const nlohmann::json& assertions);

/// Whether an enabled schedule of the default mode in the mode configurations file covers the minute after
/// midnight. A schedule ends with the hour given for its end, at minute 0.
bool scheduleCovers(const nlohmann::json& configurations, int minute);

} // namespace FocusDatabase

} // namespace tavro
