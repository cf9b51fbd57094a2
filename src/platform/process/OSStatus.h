#pragma once

#include <cstdint>

namespace tavro {

/// 0 is success; every other value is the platform's code of a failure.
using OSStatus = std::int32_t;
inline constexpr OSStatus noErr = 0;

/// Codes of four characters, big-endian.
constexpr std::uint32_t fourCharacterCode(const char (&text)[5]) {
    std::uint32_t code = 0;
    for (int i = 0; i < 4; ++i)
        code = code << 8 | static_cast<std::uint8_t>(text[i]);
    return code;
}

} // namespace tavro
