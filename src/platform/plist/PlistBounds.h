#pragma once

#include <string_view>

namespace tavro {

/// Whether the property-list library may be given these bytes. It recurses as deep as lists and dictionaries
/// nest, and copies an object of the binary format for each reference to it, so that a small file can need
/// any amount of stack and memory; and it ends the process over a text with a NUL in it. Far more is allowed
/// than property lists of programs hold.
bool isWithinPlistBounds(std::string_view bytes);

} // namespace tavro
