#include "platform/storage/PropertyList.h"

#include <limits>
#include <string_view>

namespace tavro {

namespace {

bool textIsTrue(std::string_view text) {
    const auto blanks = text.find_first_not_of(" \t\r\n");
    if (blanks == std::string_view::npos)
        return false;
    text.remove_prefix(blanks);
    if (text.front() == '+' || text.front() == '-')
        text.remove_prefix(1);
    const auto zeros = text.find_first_not_of('0');
    if (zeros == std::string_view::npos)
        return false;
    return std::string_view("YyTt123456789").find(text[zeros]) != std::string_view::npos;
}

} // namespace

bool PropertyList::boolValue() const {
    if (const auto* boolean = as<bool>())
        return *boolean;
    if (const auto* integer = as<std::int64_t>())
        return *integer != 0;
    if (const auto* real = as<double>())
        return *real != 0;
    if (const auto* text = as<std::string>())
        return textIsTrue(*text);
    return false;
}

std::optional<std::uint32_t> PropertyList::exactUInt32() const {
    constexpr auto largest = std::numeric_limits<std::uint32_t>::max();
    if (const auto* integer = as<std::int64_t>())
        if (*integer >= 0 && *integer <= std::int64_t{largest})
            return static_cast<std::uint32_t>(*integer);
    if (const auto* real = as<double>())
        if (*real >= 0 && *real <= double{largest} &&
            *real == static_cast<double>(static_cast<std::uint32_t>(*real)))
            return static_cast<std::uint32_t>(*real);
    return std::nullopt;
}

} // namespace tavro
