#pragma once

#include <cstdint>

namespace tavro {

/// A display, as the window server numbers it. Types of their own, so that no call can swap the two.
enum class DisplayID : std::uint32_t {};

/// A window, as the window server numbers it.
enum class WindowNumber : std::uint32_t {};

} // namespace tavro
