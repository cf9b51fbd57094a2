#pragma once

#include <string>
#include <string_view>

namespace tavro::KeyboardShortcuts {

/// The UTF-8 text in upper case, for what keys are labelled with: Latin with its accents, Greek and Cyrillic.
/// Everything else stays as it is, bytes that are no UTF-8 included.
std::string upperCase(std::string_view text);

} // namespace tavro::KeyboardShortcuts
