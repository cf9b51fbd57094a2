#include "notifications/FocusDatabase.h"

#include <cstdint>
#include <initializer_list>
#include <limits>
#include <optional>
#include <string>

namespace tavro {

namespace {

using nlohmann::json;

constexpr int enabled = 2; // of "enabledSetting"

/// Steps into objects by key; null where a step leads nowhere.
const json* follow(const json* value, std::initializer_list<const char*> keys) {
    for (const auto* key : keys) {
        if (!value || !value->is_object())
            return nullptr;
        const auto entry = value->find(key);
        value = entry == value->end() ? nullptr : &*entry;
    }
    return value;
}

/// The first object of the list that stands under "data".
const json* firstOfData(const json& file) {
    const auto* data = follow(&file, {"data"});
    return data && data->is_array() && !data->empty() ? &data->front() : nullptr;
}

/// A number as a signed integer of 32 bits: the low bits of an integer, the whole part of a fraction. None
/// for a fraction out of range, and for what is no number.
std::optional<std::int32_t> integer(const json& object, const char* key) {
    const auto* value = follow(&object, {key});
    if (!value)
        return std::nullopt;
    if (value->is_number_integer()) // of either sign
        return static_cast<std::int32_t>(value->get<std::uint64_t>());
    constexpr double limit = std::numeric_limits<std::int32_t>::max();
    if (value->is_number_float() && value->get<double>() >= -limit && value->get<double>() <= limit)
        return static_cast<std::int32_t>(value->get<double>());
    return std::nullopt;
}

bool covers(const json& trigger, std::int64_t minute) {
    const auto startHour = integer(trigger, "timePeriodStartTimeHour");
    const auto endHour = integer(trigger, "timePeriodEndTimeHour");
    if (integer(trigger, "enabledSetting") != enabled || !startHour || !endHour)
        return false;
    const auto start =
        std::int64_t{*startHour} * 60 + integer(trigger, "timePeriodStartTimeMinute").value_or(0);
    const auto end = std::int64_t{*endHour} * 60;
    if (start < end)
        return start <= minute && minute < end;
    return start > end && (minute >= start || minute < end); // over midnight
}

} // namespace

Result<json, std::string> FocusDatabase::parse(std::string_view bytes) {
    try {
        auto parsed = json::parse(bytes);
        if (parsed.is_structured())
            return parsed;
        return std::string("neither an object nor an array");
    } catch (const json::parse_error& failure) { // whose own text may hold any bytes of the file
        return "no JSON from byte " + std::to_string(failure.byte) + " on";
    } catch (const json::exception&) {
        return std::string("a number that is out of range");
    }
}

bool FocusDatabase::hasAssertion(const json& assertions) {
    const auto* records = follow(firstOfData(assertions), {"storeAssertionRecords"});
    return records && records->is_array() && !records->empty();
}

bool FocusDatabase::scheduleCovers(const json& configurations, int minute) {
    const auto* triggers =
        follow(firstOfData(configurations),
               {"modeConfigurations", "com.apple.donotdisturb.mode.default", "triggers", "triggers"});
    if (!triggers || !triggers->is_array())
        return false;
    bool isCovered = false;
    for (const auto& trigger : *triggers)
        isCovered = covers(trigger, minute) || isCovered;
    return isCovered;
}

} // namespace tavro
