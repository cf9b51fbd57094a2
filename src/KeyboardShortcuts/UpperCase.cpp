#include "KeyboardShortcuts/UpperCase.h"

namespace tavro::KeyboardShortcuts {

namespace {

using Character = unsigned;

bool isWithin(Character character, Character first, Character last) {
    return first <= character && character <= last;
}

/// By the blocks of the Unicode character database, of characters below U+0800.
Character upperCase(Character c) {
    if (isWithin(c, 'a', 'z') || (isWithin(c, 0xE0, 0xFE) && c != 0xF7) || isWithin(c, 0x3B1, 0x3C1) ||
        isWithin(c, 0x3C3, 0x3CB) || isWithin(c, 0x430, 0x44F))
        return c - 0x20;
    if (isWithin(c, 0x450, 0x45F))
        return c - 0x50;
    if (c == 0xFF)
        return 0x178;
    if (c == 0x131)
        return 'I';
    if (c == 0x3C2)
        return 0x3A3;
    const bool pairsBeginOdd = isWithin(c, 0x139, 0x148) || isWithin(c, 0x179, 0x17E);
    const bool pairsBeginEven = isWithin(c, 0x100, 0x137) || isWithin(c, 0x14A, 0x177) ||
                                isWithin(c, 0x460, 0x481) || isWithin(c, 0x48A, 0x4BF);
    if (pairsBeginEven)
        return c & ~1u;
    return pairsBeginOdd && c % 2 == 0 ? c - 1 : c;
}

} // namespace

std::string upperCase(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0u;
        if (byte < 0x80) {
            result += static_cast<char>(upperCase(Character{byte}));
        } else if (isWithin(byte, 0xC2, 0xDF) && next >> 6 == 2) {
            const auto character = (byte & 0x1Fu) << 6 | (next & 0x3Fu);
            const auto upper = upperCase(character);
            ++i;
            if (character == 0xDF)
                result += "SS";
            else if (upper < 0x80)
                result += static_cast<char>(upper);
            else
                (result += static_cast<char>(0xC0 | upper >> 6)) += static_cast<char>(0x80 | (upper & 0x3F));
        } else {
            result += text[i];
        }
    }
    return result;
}

} // namespace tavro::KeyboardShortcuts
