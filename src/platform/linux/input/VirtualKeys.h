#pragma once

#include <cstdint>
#include <optional>

namespace tavro {

/// The X keycode of the key at the place that the platform's virtual key code names; none where this keyboard
/// protocol has no such key.
std::optional<std::uint8_t> keycodeOfVirtualKey(std::uint32_t virtualKeyCode);
/// The other way round.
std::optional<std::uint16_t> virtualKeyOfKeycode(std::uint8_t keycode);

} // namespace tavro
