#include "KeyboardShortcuts/ShortcutRecord.h"

#include <nlohmann/json.hpp>

#include <limits>

namespace tavro::KeyboardShortcuts {

namespace {

using nlohmann::json;

constexpr auto codeMember = "carbonKeyCode";
constexpr auto modifiersMember = "carbonModifiers";

/// A member that is an integer of 64 bits with a sign.
std::optional<std::int64_t> integer(const json& object, const char* member) {
    const auto value = object.find(member);
    if (value == object.end() || !value->is_number_integer())
        return std::nullopt;
    constexpr std::uint64_t greatest = std::numeric_limits<std::int64_t>::max();
    if (value->is_number_unsigned() && value->get<std::uint64_t>() > greatest)
        return std::nullopt;
    return value->get<std::int64_t>();
}

} // namespace

std::string encode(const Shortcut& shortcut) {
    return json{{codeMember, shortcut.carbonKeyCode()}, {modifiersMember, shortcut.carbonModifiers()}}.dump();
}

std::optional<Shortcut> decode(std::string_view record) {
    const auto object = json::parse(record, nullptr, false);
    if (!object.is_object())
        return std::nullopt;
    const auto code = integer(object, codeMember);
    const auto modifiers = integer(object, modifiersMember);
    return code && modifiers ? std::optional(Shortcut(*code, *modifiers)) : std::nullopt;
}

} // namespace tavro::KeyboardShortcuts
