#include "platform/audio/AudioHardware.h"

namespace tavro {

std::uint32_t sizeOf(const AudioPropertyValue& value) {
    constexpr std::uint32_t stringSize = 8;
    if (std::holds_alternative<std::string>(value))
        return stringSize;
    if (const auto* words = std::get_if<std::vector<std::uint32_t>>(&value))
        return static_cast<std::uint32_t>(words->size()) * audioPropertyWordSize;
    return audioPropertyWordSize;
}

} // namespace tavro
