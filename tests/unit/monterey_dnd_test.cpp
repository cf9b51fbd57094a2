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

std::string trigger(int enabled, int startHour, int startMinute, int endHour) {
    return R"({"enabledSetting":)" + std::to_string(enabled) + R"(,"timePeriodStartTimeHour":)" +
           std::to_string(startHour) + R"(,"timePeriodStartTimeMinute":)" + std::to_string(startMinute) +
           R"(,"timePeriodEndTimeMinute":30,"timePeriodEndTimeHour":)" + std::to_string(endHour) + "}";
}

TEST_F(MontereyDNDTest, ScheduleEndsOnTheHourAndMaySpanMidnight) {
    const auto night = trigger(2, 22, 0, 7), day = trigger(2, 9, 30, 17);
    const std::tuple<std::string, SimulatedClock::TimeOfDay, bool> cases[] = {
        {night, {22, 0}, true},
        {night, {6, 59}, true},
        {night, {7, 0}, false},
        {night, {21, 59}, false},
        {day, {9, 29}, false},
        {day, {9, 30}, true},
        {day, {17, 0}, false},
        {trigger(2, 8, 0, 8), {8, 0}, false},
        {trigger(1, 0, 0, 24), {12, 0}, false},
        {night + "," + day, {23, 0}, true},
        {R"({"enabledSetting":2,"timePeriodEndTimeHour":17})", {9, 0}, false},
        {R"({"enabledSetting":2,"timePeriodStartTimeHour":9})", {9, 0}, false},
        {R"({"timePeriodStartTimeHour":0,"timePeriodEndTimeHour":24})", {9, 0}, false},
        // Numbers of other sizes and kinds, and no minute.
        {R"({"enabledSetting":2.9,"timePeriodStartTimeHour":9.5,"timePeriodEndTimeHour":17})", {9, 0}, true},
        {R"({"enabledSetting":4294967298,"timePeriodStartTimeHour":9,"timePeriodEndTimeHour":17})",
         {9, 0},
         true},
        {R"({"enabledSetting":2,"timePeriodStartTimeHour":-2147483647.0,"timePeriodEndTimeHour":2147483647.0})",
         {9, 0},
         true},
        {R"({"enabledSetting":2,"timePeriodStartTimeHour":-1e300,"timePeriodEndTimeHour":24})",
         {9, 0},
         false},
        {R"({"enabledSetting":2,"timePeriodStartTimeHour":9,"timePeriodEndTimeHour":1e300})", {9, 0}, false},
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
