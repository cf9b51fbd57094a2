#include "KeyboardShortcuts/UpperCase.h"

#include <utf8proc.h>

#include <array>
#include <iterator>

namespace tavro::KeyboardShortcuts {

namespace {

/// Characters of keyboards whose upper case is more than one character.
const char* severalInUpperCase(utf8proc_int32_t character) {
    switch (character) {
    case U'ß':
        return "SS";
    case U'ŉ':
        return "ʼN";
    case U'և':
        return "ԵՒ";
    }
    return nullptr;
}

std::string upperCase(utf8proc_int32_t character) {
    if (const auto* several = severalInUpperCase(character))
        return several;
    std::array<utf8proc_uint8_t, 4> bytes{};
    const auto length = utf8proc_encode_char(utf8proc_toupper(character), bytes.data());
    return {bytes.begin(), bytes.begin() + length};
}

} // namespace

std::string upperCase(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        utf8proc_int32_t character = 0;
        const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
        const auto length = utf8proc_iterate(bytes, std::ssize(text), &character);
        result += length > 0 ? upperCase(character) : std::string(1, text.front());
        text.remove_prefix(length > 0 ? static_cast<std::size_t>(length) : 1);
    }
    return result;
}

} // namespace tavro::KeyboardShortcuts
