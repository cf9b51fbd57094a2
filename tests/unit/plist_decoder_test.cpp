#include "platform/plist/LibPlistDecoder.h"
#include "platform/plist/PlistNode.h"

#include <gtest/gtest.h>

#include <string>

namespace tavro {
namespace {

std::string repeated(const std::string& text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

std::string nestedXml(int levels) {
    return "<plist version=\"1.0\">" + repeated("<array>", levels) + repeated("</array>", levels) +
           "</plist>";
}

/// A binary property list of one-byte offsets and references.
std::string binary(const std::vector<std::string>& objects) {
    std::string bytes = "bplist00", offsets;
    for (const auto& object : objects) {
        offsets += static_cast<char>(bytes.size());
        bytes += object;
    }
    const auto table = bytes.size();
    const auto big = [](std::size_t value) { return std::string(7, '\0') + static_cast<char>(value); };
    return bytes + offsets + std::string(6, '\0') + "\1\1" + big(objects.size()) + big(0) + big(table);
}

/// Each list holds the next one twice: two to the power of the levels in all.
std::string doubling(int levels) {
    std::vector<std::string> objects;
    for (int level = 1; level <= levels; ++level)
        objects.push_back(std::string("\xA2") + static_cast<char>(level) + static_cast<char>(level));
    objects.push_back("\x09"); // true
    return binary(objects);
}

TEST(PlistDecoderTest, WhatWouldNeedFarMoreThanItsSizeIsNoPropertyList) {
    const struct {
        const char* what;
        std::string bytes;
        bool isDecoded;
    } cases[] = {
        {"lists in lists", nestedXml(60), true},
        {"lists in lists, without end", nestedXml(200000), false},
        {"lists that hold the next one twice", doubling(8), true},
        {"two to the power of 40 objects", doubling(40), false},
        {"a list that holds itself", binary({std::string("\xA1\0", 2)}), false},
        {"lists that hold each other", binary({"\xA1\1", std::string("\xA1\0", 2)}), false},
        {"a list of more than there is", binary({"\xAF\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"}), false},
        {"a text with a NUL",
         binary({std::string("\x53"
                             "a\0b",
                             4)}),
         false},
        {"a text of two-byte characters with a NUL", binary({std::string("\x62\0a\0\0", 5)}), false},
        {"a text of two-byte characters", binary({std::string("\x62\0a\0b", 5)}), true},
        {"an offset beyond the end", binary({"\x09"}).replace(9, 1, "\xFF"), false},
        {"the head alone", "bplist00", false},
        {"too large", "<plist version=\"1.0\"><string>" + std::string(5 << 20, 'x') + "</string></plist>",
         false},
    };
    for (const auto& [what, bytes, isDecoded] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(bool(LibPlistDecoder().decode(bytes)), isDecoded);
    }
}

} // namespace
} // namespace tavro
