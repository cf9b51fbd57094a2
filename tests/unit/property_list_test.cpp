#include "platform/storage/PropertyList.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tavro {
namespace {

TEST(PropertyListTest, EveryTypeConvertsToABoolean) {
    for (const auto* text : {"YES", "y", "True", "t", "yellow", "1", " \t9", "+1", "-1", "007", "00y"})
        EXPECT_TRUE(PropertyList(text).boolValue()) << text;
    for (const auto* text : {"no", "on", "", "  \t\n", "-", "--1", "- 1", "000", "0.5", "a1"})
        EXPECT_FALSE(PropertyList(text).boolValue()) << text;
    const PropertyList truths[] = {true, -1, std::int64_t{1} << 32, 0.1, std::nan("")};
    for (const auto& value : truths)
        EXPECT_TRUE(value.boolValue()) << "number " << &value - truths;
    const PropertyList others[] = {false,
                                   0,
                                   0.0,
                                   PropertyList::Data{1},
                                   PropertyList::Date{1},
                                   PropertyList::Array{true},
                                   PropertyList::Dictionary{{"tavro", true}}};
    for (const auto& value : others)
        EXPECT_FALSE(value.boolValue()) << "number " << &value - others;
}

TEST(PropertyListTest, ConvertsOnlyExactUnsigned32BitIntegers) {
    constexpr auto largest = std::numeric_limits<std::uint32_t>::max();
    const std::pair<PropertyList, std::uint32_t> exact[] = {
        {0, 0}, {7, 7}, {7.0, 7}, {largest, largest}, {double{largest}, largest}};
    const PropertyList others[] = {-1,    std::int64_t{1} << 32, std::numeric_limits<std::int64_t>::min(),
                                   7.5,   double{largest} + 0.5, -1.0,
                                   1e300, std::nan(""),          std::numeric_limits<double>::infinity(),
                                   "7",   PropertyList::Array{7}};
    for (const auto& [value, number] : exact)
        EXPECT_EQ(value.exactUInt32(), number);
    for (const auto& value : others)
        EXPECT_EQ(value.exactUInt32(), std::nullopt) << "number " << &value - others;
}

} // namespace
} // namespace tavro
