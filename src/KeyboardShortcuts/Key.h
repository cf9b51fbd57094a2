#pragma once

#include <cstdint>

namespace tavro::KeyboardShortcuts {

/// A virtual key code: the place of a key, whatever its label. Values without a name are keys as well. Names
/// that are words of the language end with an underscore.
enum class Key : std::int64_t {
    // clang-format off
    a = 0, b = 11, c = 8, d = 2, e = 14, f = 3, g = 5, h = 4, i = 34, j = 38, k = 40, l = 37, m = 46, n = 45,
    o = 31, p = 35, q = 12, r = 15, s = 1, t = 17, u = 32, v = 9, w = 13, x = 7, y = 16, z = 6,
    zero = 29, one = 18, two = 19, three = 20, four = 21, five = 23, six = 22, seven = 26, eight = 28, nine = 25,
    capsLock = 57, shift = 56, function = 63, control = 59, option = 58, command = 55,
    rightCommand = 54, rightOption = 61, rightControl = 62, rightShift = 60,
    return_ = 36, backslash = 42, backtick = 50, comma = 43, equal = 24, minus = 27, period = 47, quote = 39,
    semicolon = 41, slash = 44, space = 49, tab = 48, leftBracket = 33, rightBracket = 30,
    pageUp = 116, pageDown = 121, home = 115, end = 119,
    upArrow = 126, rightArrow = 124, downArrow = 125, leftArrow = 123,
    escape = 53, delete_ = 51, deleteForward = 117, help = 114, mute = 74, volumeUp = 72, volumeDown = 73,
    f1 = 122, f2 = 120, f3 = 99, f4 = 118, f5 = 96, f6 = 97, f7 = 98, f8 = 100, f9 = 101, f10 = 109,
    f11 = 103, f12 = 111, f13 = 105, f14 = 107, f15 = 113, f16 = 106, f17 = 64, f18 = 79, f19 = 80, f20 = 90,
    keypad0 = 82, keypad1 = 83, keypad2 = 84, keypad3 = 85, keypad4 = 86, keypad5 = 87, keypad6 = 88,
    keypad7 = 89, keypad8 = 91, keypad9 = 92, keypadClear = 71, keypadDecimal = 65, keypadDivide = 75,
    keypadEnter = 76, keypadEquals = 81, keypadMinus = 78, keypadMultiply = 67, keypadPlus = 69,
    // clang-format on
};

constexpr std::int64_t rawValue(Key key) {
    return static_cast<std::int64_t>(key);
}

} // namespace tavro::KeyboardShortcuts
