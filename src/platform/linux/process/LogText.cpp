#include "platform/linux/process/LogText.h"

#include <glib.h>

#include <cstdio>

namespace tavro {

namespace {

constexpr std::string_view cutOff = "…";

bool isShown(gunichar character) {
    const auto type = g_unichar_type(character);
    return g_unichar_isprint(character) && type != G_UNICODE_LINE_SEPARATOR &&
           type != G_UNICODE_PARAGRAPH_SEPARATOR;
}

std::string number(const char* format, unsigned value) {
    char text[16];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

/// Takes the first character away, or the first byte of what is none.
std::string takePiece(std::string_view& rest) {
    const auto character = g_utf8_get_char_validated(rest.data(), static_cast<gssize>(rest.size()));
    const auto first = static_cast<unsigned char>(rest.front());
    constexpr gunichar last = 0x10FFFF, lastOfOneByte = 0x7F;
    const std::size_t length = character <= last ? static_cast<std::size_t>(g_utf8_skip[first]) : 1;
    const auto bytes = rest.substr(0, length);
    rest.remove_prefix(length);
    if (first == '\n')
        return "\\n";
    if (character > last || (character <= lastOfOneByte && !isShown(character)))
        return number("\\x%02x", first);
    return isShown(character) ? std::string(bytes) : number("\\u{%x}", character);
}

} // namespace

std::string logText(std::string_view text, std::size_t atMost) {
    std::string line;
    std::size_t shortened = 0; // with room for the end
    while (!text.empty()) {
        const auto piece = takePiece(text);
        if (line.size() + piece.size() > atMost)
            return line.substr(0, shortened).append(cutOff);
        line += piece;
        if (line.size() + cutOff.size() <= atMost)
            shortened = line.size();
    }
    return line;
}

} // namespace tavro
