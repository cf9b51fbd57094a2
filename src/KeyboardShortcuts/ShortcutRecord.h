#pragma once

#include "KeyboardShortcuts/Shortcut.h"

#include <optional>
#include <string>
#include <string_view>

namespace tavro::KeyboardShortcuts {

/// A shortcut as it is stored: a JSON object with the two integers "carbonKeyCode" and "carbonModifiers",
/// compact.
std::string encode(const Shortcut& shortcut);
/// None for everything that is no such object. Other members are ignored. Takes any bytes.
std::optional<Shortcut> decode(std::string_view record);

} // namespace tavro::KeyboardShortcuts
