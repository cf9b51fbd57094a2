#pragma once

#include <compare>
#include <string_view>

namespace tavro {

/// Compares texts character by character, but runs of digits by their value, however long: 1.10 comes after
/// 1.9. A text comes after its own beginning. No locale.
std::weak_ordering compareNumerically(std::string_view left, std::string_view right);

} // namespace tavro
