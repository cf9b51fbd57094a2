#include "platform/PropertyList.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tavro {
namespace {

TEST(PropertyListTest, ReadsABooleanFromEveryType) {
    const struct {
        const char* what;
        PropertyList value;
        bool expected;
    } cases[] = {
        {"true", true, true},
        {"false", false, false},
        {"zero", 0, false},
        {"negative", -1, true},
        {"beyond 32 bits", std::int64_t{1} << 32, true},
        {"real zero", 0.0, false},
        {"fraction", 0.1, true},
        {"YES", "YES", true},
        {"y", "y", true},
        {"True", "True", true},
        {"t", "t", true},
        {"begins with a letter of truth", "yellow", true},
        {"no", "no", false},
        {"on", "on", false},
        {"empty", "", false},
        {"blanks", "  \t\n", false},
        {"one", "1", true},
        {"after blanks", " \t9", true},
        {"plus", "+1", true},
        {"minus", "-1", true},
        {"sign only", "-", false},
        {"two signs", "--1", false},
        {"blank after the sign", "- 1", false},
        {"leading zeros", "007", true},
        {"zeros before a letter", "00y", true},
        {"zeros only", "000", false},
        {"fraction in a text", "0.5", false},
        {"letter before a digit", "a1", false},
        {"data", PropertyList::Data{1}, false},
        {"date", PropertyList::Date{1}, false},
        {"array", PropertyList::Array{true}, false},
        {"dictionary", PropertyList::Dictionary{{"tavro", true}}, false},
    };
    for (const auto& [what, value, expected] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(value.boolValue(), expected);
    }
}

TEST(PropertyListTest, ConvertsOnlyExactUnsigned32BitIntegers) {
    constexpr auto none = std::nullopt;
    constexpr auto largest = std::numeric_limits<std::uint32_t>::max();
    const struct {
        const char* what;
        PropertyList value;
        std::optional<std::uint32_t> expected;
    } cases[] = {
        {"zero", 0, 0},
        {"small", 7, 7},
        {"largest", largest, largest},
        {"2^32", std::int64_t{1} << 32, none},
        {"negative", -1, none},
        {"smallest", std::numeric_limits<std::int64_t>::min(), none},
        {"whole real", 7.0, 7},
        {"largest real", double{largest}, largest},
        {"fraction", 7.5, none},
        {"fraction above the largest", double{largest} + 0.5, none},
        {"negative real", -1.0, none},
        {"real beyond 64 bits", 1e300, none},
        {"not a number", std::nan(""), none},
        {"infinite", std::numeric_limits<double>::infinity(), none},
        {"text", "7", none},
        {"array", PropertyList::Array{7}, none},
    };
    for (const auto& [what, value, expected] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(value.exactUInt32(), expected);
    }
}

} // namespace
} // namespace tavro
