#pragma once

#include <string>
#include <string_view>

namespace tavro::KeyboardShortcuts {

/// The UTF-8 text in upper case, for what keys are labelled with in any script. Bytes that are no UTF-8 stay
/// as they are.
std::string upperCase(std::string_view text);

} // namespace tavro::KeyboardShortcuts
