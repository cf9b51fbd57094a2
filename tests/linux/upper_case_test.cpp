#include "KeyboardShortcuts/UpperCase.h"

#include <QString>

#include <gtest/gtest.h>

namespace tavro {

// Up to the last script that keys have; of the characters whose upper case is several, keys have these.
TEST(UpperCase, MatchesUnicodeForKeyboardScripts) {
    for (char16_t character = 0x20; character < 0x2000; ++character) {
        const QString text(character), expected = text.toUpper();
        if (expected.size() == 1 || QString("ßŉև").contains(text)) {
            EXPECT_EQ(KeyboardShortcuts::upperCase(text.toStdString()), expected.toStdString());
        }
    }
}

} // namespace tavro
