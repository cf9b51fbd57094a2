#include "platform/plist/LibPlistDecoder.h"
#include "platform/plist/PlistBounds.h"
#include "platform/plist/PlistNode.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace tavro {
namespace {

using namespace std::string_literals;

std::string repeated(const std::string& text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

std::string xml(const std::string& content) {
    return "<plist version=\"1.0\">" + content + "</plist>";
}

std::string bigEndian(std::uint64_t value, int width) {
    std::string bytes;
    while (width-- > 0)
        bytes += static_cast<char>(value >> 8 * width);
    return bytes;
}

/// The reference to an object, as lists hold it.
std::string to(std::size_t object) {
    return bigEndian(object, 2);
}

/// A marker with a count of four bytes.
std::string counted(char marker, std::size_t count) {
    return marker + "\x12"s + bigEndian(count, 4);
}

/// A binary property list, the first object its root.
std::string binary(const std::vector<std::string>& objects) {
    std::string bytes = "bplist00", offsets;
    for (const auto& object : objects) {
        offsets += bigEndian(bytes.size(), 4);
        bytes += object;
    }
    const auto table = bytes.size();
    return bytes + offsets + std::string(6, '\0') + "\4\2" + bigEndian(objects.size(), 8) + bigEndian(0, 8) +
           bigEndian(table, 8);
}

/// Each list holds the next one so many times.
std::string nested(int levels, int times) {
    std::vector<std::string> objects;
    for (int level = 1; level <= levels; ++level)
        objects.push_back(static_cast<char>(0xA0 + times) +
                          repeated(to(static_cast<std::size_t>(level)), times));
    objects.push_back("\x09"); // true
    return binary(objects);
}

/// A list that holds one object so many times.
std::string list(std::size_t times, const std::string& object) {
    return binary({counted('\xAF', times) + repeated(to(1), static_cast<int>(times)), object});
}

TEST(PlistBoundsTest, LimitsAreExact) {
    const auto ascii = [](std::size_t count) { return counted('\x5F', count) + std::string(count, 'x'); };
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"bytes", std::string(4 << 20, ' '), std::string((4 << 20) + 1, ' ')},
        {"lists and dictionaries in XML", repeated("<array><dict>", 2048),
         repeated("<array><dict>", 2048) + "<dict/>"},
        {"levels", nested(128, 1), nested(129, 1)},
        {"objects, each reference to one", list(65535, "\x09"), list(65536, "\x09")},
        {"characters, each reference to a text", list(64, ascii(32768)), list(65, ascii(32768))},
        {"keys and values", binary({"\xD1" + to(1) + to(2), ascii(1 << 20), ascii(1 << 20)}),
         binary({"\xD2" + repeated(to(1), 3) + to(2), ascii(1 << 19), ascii((1 << 19) + 1)})},
    };
    for (const auto& [what, most, more] : cases) {
        SCOPED_TRACE(what);
        EXPECT_TRUE(isWithinPlistBounds(most));
        EXPECT_FALSE(isWithinPlistBounds(more));
    }
}

TEST(PlistBoundsTest, OnlyReachableObjectsCount) {
    const auto nul = "\x53"s + "a\0b"s;
    const auto withTrailer = [](std::string bytes, std::size_t fromEnd, char value) {
        bytes[bytes.size() - fromEnd] = value;
        return bytes;
    };
    constexpr std::size_t count = 17, root = 9;
    EXPECT_FALSE(isWithinPlistBounds(binary({"\xC1" + to(1), nul}))); // a set
    EXPECT_FALSE(isWithinPlistBounds(withTrailer(binary({"\x09", nul}), root, 1)));
    EXPECT_TRUE(isWithinPlistBounds(withTrailer(binary({nul, "\x09"}), root, 1)));
    EXPECT_TRUE(isWithinPlistBounds(withTrailer(binary({"\xA1" + to(1), nul}), count, 1)));
}

TEST(PlistBoundsTest, NulIsRejectedInAnyNotation) {
    for (const auto& text : {"a\0b"s, "a&#0;b"s, "a&#00;b"s, "a&#x0;b"s})
        EXPECT_FALSE(isWithinPlistBounds(xml("<string>" + text + "</string>"))) << text;
    EXPECT_TRUE(isWithinPlistBounds(xml("<string>a&#10;b</string>")));
}

TEST(PlistDecoderTest, RejectsWhatTheLibraryCannotHandle) {
    const std::tuple<const char*, std::string, bool> cases[] = {
        {"lists in lists", xml(repeated("<array>", 60) + repeated("</array>", 60)), true},
        {"lists in lists, without end", xml(repeated("<array>", 200000)), false},
        {"two to the power of 40 objects", nested(40, 2), false},
        {"a list that holds itself", binary({"\xA1" + to(0)}), false},
        {"a dictionary that holds itself", binary({"\xD1" + to(1) + to(0), "\x51k"}), false},
        {"a list of more than there is", binary({"\xAF\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"}), false},
        {"a text with a NUL", binary({"\x53"s + "a\0b"s}), false},
        {"a NUL behind a text", binary({"\x51"s + "a\0"s}), true},
        {"a NUL in a key", binary({"\xD1" + to(1) + to(2), "\x53"s + "a\0b"s, "\x09"}), false},
        {"a long text with a NUL", binary({counted('\x5F', 20) + std::string(19, 'x') + '\0'}), false},
        {"a text of two-byte characters with a NUL", binary({"\x62"s + "\0a\0\0"s, "\x42xx"}), false},
        {"a text of two-byte characters", binary({"\x62"s + "\0a\0b"s}), true},
        {"data with a NUL", binary({"\x42"s + "a\0"s}), true},
        {"an offset beyond the end", binary({"\x09"}).replace(9, 1, "\xFF"), false},
        {"the head alone", "bplist00", false},
        {"an XML text with a NUL", xml("<string>a\0b</string>"s), false},
    };
    for (const auto& [what, bytes, isDecoded] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(bool(LibPlistDecoder().decode(bytes)), isDecoded);
    }
}

TEST(PlistNodeTest, LevelsBeyond128AreDropped) {
    for (const auto& [begin, end] : {std::pair("<array>", "</array>"), {"<dict><key>key</key>", "</dict>"}}) {
        const auto decoded = [&](int levels) {
            return *LibPlistDecoder().decode(
                xml(repeated(begin, levels) + "<true/>" + repeated(end, levels)));
        };
        EXPECT_EQ(decoded(129), decoded(128)) << begin;
        EXPECT_NE(decoded(128), decoded(127)) << begin;
    }
}

TEST(PlistNodeTest, EveryKindOfValueSurvivesBothFormats) {
    const PropertyList value = PropertyList::Dictionary{
        {"boolean", true},
        {"integer", std::int64_t{1} << 40},
        {"negative", -7},
        {"real", 0.25},
        {"text", "ä"},
        {"data", PropertyList::Data{0, 1, 255}},
        {"date", PropertyList::Date{2}},
        {"list", PropertyList::Array{1, "two", PropertyList::Array{}}},
        {"dictionary", PropertyList::Dictionary{{"false", false}}},
    };
    for (const auto& bytes : {formatPlistXml(toPlist(value)), formatPlistBinary(toPlist(value))}) {
        const auto decoded = LibPlistDecoder().decode(bytes);
        ASSERT_TRUE(decoded) << bytes;
        EXPECT_EQ(*decoded, value) << bytes;
    }
    const PropertyList fraction = PropertyList::Date{2.25}; // which XML does not hold
    EXPECT_EQ(*LibPlistDecoder().decode(formatPlistBinary(toPlist(fraction))), fraction);
}

} // namespace
} // namespace tavro
