#include "support/machines/Launch.h"

#include "notifications/FocusDatabase.h"
#include "notifications/MontereyDND.h"

#include <string>
#include <tuple>

namespace tavro {
namespace {

using namespace std::string_literals;

constexpr auto assertionsFile = SimulatedNotificationCenter::assertionsFile;
constexpr auto configurationsFile = SimulatedNotificationCenter::configurationsFile;

using MontereyDNDTest = SimulatedMacTest;

std::string configurations(const std::string& triggers) {
    return R"({"header":{},"data":[{"modeConfigurations":{"another.mode":{},)"
           R"("com.apple.donotdisturb.mode.default":{"triggers":{"triggers":)" +
           triggers + R"(}}}},{"second":0}]})";
}

/// With those entries that are not empty.
std::string trigger(const std::string& enabled, const std::string& start, const std::string& end,
                    const std::string& startMinute = "") {
    std::string entries;
    for (const auto& [key, value] : {std::pair("enabledSetting", enabled),
                                     {"timePeriodStartTimeHour", start},
                                     {"timePeriodEndTimeHour", end},
                                     {"timePeriodStartTimeMinute", startMinute}})
        if (!value.empty())
            entries += ",\""s + key + "\":" + value;
    return R"({"timePeriodEndTimeMinute":30)" + entries + "}";
}

TEST_F(MontereyDNDTest, ScheduleEndsOnTheHourAndMaySpanMidnight) {
    const auto night = trigger("2", "22", "7"), day = trigger("2", "9", "17", "30");
    const std::tuple<std::string, SimulatedClock::TimeOfDay, bool> cases[] = {
        {night, {22, 0}, true},
        {night, {6, 59}, true},
        {night, {7, 0}, false},
        {night, {21, 59}, false},
        {day, {9, 29}, false},
        {day, {9, 30}, true},
        {day, {17, 0}, false},
        {trigger("2", "8", "8"), {8, 0}, false},
        {trigger("1", "0", "24"), {12, 0}, false},
        {night + "," + day, {23, 0}, true},
        {trigger("2", "", "17"), {9, 0}, false},
        {trigger("2", "9", ""), {9, 0}, false},
        {trigger("", "0", "24"), {9, 0}, false},
        // Numbers of other sizes and kinds.
        {trigger("2.9", "9.5", "17"), {9, 0}, true},
        {trigger("4294967298", "9", "17"), {9, 0}, true},
        {trigger("2", "-2147483647.0", "2147483647.0"), {9, 0}, true},
        {trigger("2", "-1e300", "24"), {9, 0}, false},
        {trigger("2", "9", "1e300"), {9, 0}, false},
    };
    const Process process(mac);
    for (const auto& [triggers, time, isEnabled] : cases) {
        SCOPED_TRACE(triggers + " at " + std::to_string(time.hour) + ":" + std::to_string(time.minute));
        mac.files().write(configurationsFile, configurations("[" + triggers + "]"));
        mac.clock().timeOfDay = time;
        EXPECT_EQ(MontereyDND::isEnabled(), isEnabled);
    }
}

TEST_F(MontereyDNDTest, AssertionMakesSchedulesIrrelevant) {
    const Process process(mac);
    mac.files().remove(configurationsFile); // which would be a line
    mac.files().write(assertionsFile, R"({"data":[{"storeAssertionRecords":[null]},{}]})");
    EXPECT_TRUE(MontereyDND::isEnabled());
}

TEST_F(MontereyDNDTest, UnknownShapesCountAsOff) {
    const Process process(mac);
    for (const auto& text :
         {"{}"s, "[]"s, R"({"data":null})"s, R"({"data":[]})"s, R"({"data":[[]]})"s,
          R"({"data":[{},{"storeAssertionRecords":[1]}]})"s, R"({"data":[{"storeAssertionRecords":[]}]})"s,
          R"({"data":[{"storeAssertionRecords":{"0":1}}]})"s,
          R"({"data":{"0":{"storeAssertionRecords":[1]}}})"s, R"({"data":[{"modeConfigurations":7}]})"s,
          configurations("{}"), configurations("null"), configurations("[null,1,[],{}]")}) {
        mac.files().write(assertionsFile, text);
        mac.files().write(configurationsFile, text);
        EXPECT_FALSE(MontereyDND::isEnabled()) << text;
    }
}

TEST_F(MontereyDNDTest, UnreadableFileIsLoggedOnce) {
    const Process process(mac);
    const auto file = (mac.files().homeFolder() / assertionsFile).string();
    const std::pair<const char*, const char*> cases[] = {{"{\"data\":", "no JSON from byte 9 on"},
                                                         {"7", "neither an object nor an array"},
                                                         {"{\"a\":1e999}", "a number that is out of range"}};
    for (const auto& [text, reason] : cases) {
        mac.files().write(assertionsFile, text);
        EXPECT_FALSE(MontereyDND::enabledByAssertion());
        EXPECT_EQ(mac.log().takeDiagnosed(), Lines{"Failed to parse dict " + file + ", error " + reason});
    }
    mac.files().remove("Library");
    EXPECT_FALSE(MontereyDND::isEnabled());
    const auto diagnosed = mac.log().takeDiagnosed();
    ASSERT_EQ(diagnosed.size(), 2u);
    EXPECT_EQ(diagnosed.front(), "Failed to open " + file + ", error No such file or directory");
}

} // namespace
} // namespace tavro
