#include "support/Launch.h"

#include "notifications/FocusDatabase.h"
#include "notifications/MontereyDND.h"

#include <string>
#include <tuple>

namespace tavro {
namespace {

constexpr auto assertionsFile = SimulatedNotificationCenter::assertionsFile;
constexpr auto configurationsFile = SimulatedNotificationCenter::configurationsFile;

class MontereyDNDTest : public SimulatedMacTest {
protected:
    void at(int hour, int minute) { mac.clock().timeOfDay = {hour, minute}; }
    std::string home(const std::string& file) { return mac.files().homeFolder() / file; }

    Process process{mac};
};

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
    const std::tuple<std::string, int, int, bool> cases[] = {
        {night, 22, 0, true},
        {night, 0, 0, true},
        {night, 6, 59, true},
        {night, 7, 0, false},
        {night, 21, 59, false},
        {day, 9, 29, false},
        {day, 9, 30, true},
        {day, 17, 0, false},
        {trigger(2, 8, 0, 8), 8, 0, false},
        {trigger(1, 0, 0, 24), 12, 0, false},
        {night + "," + day, 23, 0, true},
        {R"({"enabledSetting":2,"timePeriodStartTimeHour":9,"timePeriodEndTimeHour":17})", 9, 0, true},
        {R"({"enabledSetting":2,"timePeriodEndTimeHour":17})", 9, 0, false},
        {R"({"enabledSetting":2,"timePeriodStartTimeHour":9})", 9, 0, false},
        {R"({"timePeriodStartTimeHour":0,"timePeriodEndTimeHour":24})", 9, 0, false},
        // Numbers of other sizes and kinds.
        {R"({"enabledSetting":2.9,"timePeriodStartTimeHour":9.5,"timePeriodEndTimeHour":17})", 9, 0, true},
        {R"({"enabledSetting":4294967298,"timePeriodStartTimeHour":9,"timePeriodEndTimeHour":17})", 9, 0,
         true},
        {R"({"enabledSetting":2,"timePeriodStartTimeHour":-2147483648,"timePeriodEndTimeHour":2147483647})",
         9, 0, true},
        {R"({"enabledSetting":2,"timePeriodStartTimeHour":-1e300,"timePeriodEndTimeHour":24})", 9, 0, false},
        {R"({"enabledSetting":2,"timePeriodStartTimeHour":9,"timePeriodEndTimeHour":1e300})", 9, 0, false},
    };
    for (const auto& [triggers, hour, minute, isEnabled] : cases) {
        SCOPED_TRACE(triggers + " at " + std::to_string(hour) + ":" + std::to_string(minute));
        mac.files().write(configurationsFile, configurations("[" + triggers + "]"));
        at(hour, minute);
        EXPECT_EQ(MontereyDND::isEnabled(), isEnabled);
    }
}

TEST_F(MontereyDNDTest, AssertionMakesSchedulesIrrelevant) {
    mac.files().remove(configurationsFile); // which would be a line
    mac.files().write(assertionsFile, R"({"data":[{"storeAssertionRecords":[null]},{}]})");
    EXPECT_TRUE(MontereyDND::isEnabled());
    mac.files().write(assertionsFile, R"({"data":[{},{"storeAssertionRecords":[1]}]})");
    EXPECT_FALSE(MontereyDND::enabledByAssertion());
}

TEST_F(MontereyDNDTest, UnknownShapesCountAsOff) {
    for (const auto* text :
         {"{}", "[]", R"({"data":null})", R"({"data":[]})", R"({"data":[[]]})",
          R"({"data":[{"storeAssertionRecords":[]}]})", R"({"data":[{"storeAssertionRecords":{"0":1}}]})",
          R"({"data":{"0":{"storeAssertionRecords":[1]}}})", R"({"data":[{"modeConfigurations":7}]})"}) {
        SCOPED_TRACE(text);
        mac.files().write(assertionsFile, text);
        mac.files().write(configurationsFile, text);
        EXPECT_FALSE(MontereyDND::isEnabled());
    }
    for (const auto* triggers : {"{}", "null", "[null,1,[],{}]"}) {
        SCOPED_TRACE(triggers);
        mac.files().write(configurationsFile, configurations(triggers));
        EXPECT_FALSE(MontereyDND::enabledBySchedule());
    }
}

TEST_F(MontereyDNDTest, UnreadableFileIsLoggedOnce) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "no JSON from byte 1 on"},
        {"{\"data\":", "no JSON from byte 9 on"},
        {"{} {}", "no JSON from byte 4 on"},
        {"7", "neither an object nor an array"},
        {"{\"a\":1e999}", "a number that is out of range"},
        {"{\"a\":\"\xff\"}", "no JSON from byte 7 on"},
    };
    for (const auto& [text, reason] : cases) {
        mac.files().write(assertionsFile, text);
        EXPECT_FALSE(MontereyDND::enabledByAssertion());
        EXPECT_EQ(mac.log().takeDiagnosed(),
                  Lines{"Failed to parse dict " + home(assertionsFile) + ", error " + reason});
    }
    mac.files().remove("Library");
    EXPECT_FALSE(MontereyDND::isEnabled());
    const std::string error = ", error No such file or directory";
    EXPECT_EQ(mac.log().takeDiagnosed(), (Lines{"Failed to open " + home(assertionsFile) + error,
                                                "Failed to open " + home(configurationsFile) + error}));
}

} // namespace
} // namespace tavro
