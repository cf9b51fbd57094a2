#include "support/machines/Launch.h"

#include "notifications/DoNotDisturb.h"
#include "notifications/FocusDatabase.h"
#include "notifications/MontereyDND.h"
#include "platform/plist/PlistNode.h"

#include <functional>
#include <string>
#include <tuple>

namespace tavro {
namespace {

using Dictionary = PropertyList::Dictionary;
constexpr auto preferencesFile = SimulatedNotificationCenter::preferencesFile;

/// One machine of a generation, with a process on it.
struct Generation {
    explicit Generation(SystemVersion version)
        : mac(version) {}

    std::string journalOf(const std::function<void()>& call) {
        mac.journal().clear();
        call();
        mac.mainQueue().runUntilIdle();
        return joined(mac.journal().lines());
    }
    bool isSilent() { return mac.systemNotificationCenter().isSilent(); }

    SimulatedMac mac;
    Process process{mac};
};

const std::string click = "mouseEvents.post 0 1 1 1905,5 0 524288; mouseEvents.post 0 1 2 1905,5 0 524288; "
                          "clock.wait 0.1; mouseEvents.post 0 1 1 400,780 0 524288; "
                          "mouseEvents.post 0 1 2 400,780 0 524288";
const std::string flagSet = "; userDefaults.setObject DNDfromTavro true";
const std::string flagCleared = "; userDefaults.setObject DNDfromTavro false";

std::string report(const std::string& what, bool isEnabled, bool isFromTavro) {
    return "log.print " + what + "; log.print isEnabled " + (isEnabled ? "true" : "false") +
           "; log.print DNDfromTavro " + (isFromTavro ? "true" : "false");
}

TEST(DoNotDisturbTest, ClicksSwitchItFromVersion11On) {
    const auto enabling =
        report("ENABLE", false, false) + flagSet + "; accessibility.isProcessTrusted true; " + click;
    const auto disabling = report("DISABLE", true, true) + "; " + click + flagCleared;
    for (const SystemVersion version : {SystemVersion{11, 0}, {12, 0}}) {
        SCOPED_TRACE(version.major);
        Generation on(version);
        EXPECT_EQ(on.journalOf(&DoNotDisturb::enable), enabling);
        EXPECT_TRUE(on.isSilent());
        EXPECT_EQ(on.journalOf(&DoNotDisturb::disable), disabling);
        EXPECT_FALSE(on.isSilent());
    }
}

TEST(DoNotDisturbTest, PreferencesSwitchItBeforeVersion11) {
    const std::string domain = "com.apple.notificationcenterui", set = "; preferences.setValue " + domain,
                      remove = "; preferences.removeValue " + domain,
                      restart = "; runningProcesses.forceTerminate " + domain,
                      announce = "; preferences.synchronize " + domain +
                                 "; distributedNotificationCenter.post " + domain + ".dndprefs_changed true";
    Generation catalina({10, 15});
    EXPECT_EQ(catalina.journalOf(&DoNotDisturb::enable),
              report("ENABLE", false, false) + flagSet + set + " doNotDisturb true" + set +
                  " doNotDisturbDate (a value)" + announce + restart);
    EXPECT_TRUE(catalina.isSilent());
    EXPECT_EQ(catalina.mac.preferences().synchronized(domain).at("doNotDisturbDate"),
              PropertyList(catalina.mac.clock().now()));
    const auto off = set + " doNotDisturb false" + remove + " doNotDisturbDate" + announce;
    const auto schedule = set + " dndStart 0" + set + " dndEnd 1440; clock.wait 0.4" + remove + " dndStart" +
                          remove + " dndEnd" + announce;
    EXPECT_EQ(catalina.journalOf(&DoNotDisturb::disable),
              report("DISABLE", true, true) + off + restart + schedule);
    EXPECT_FALSE(catalina.isSilent());
    catalina.mac.systemNotificationCenter().remove(); // and the flag is still there
    EXPECT_EQ(catalina.journalOf(&DoNotDisturb::disable), report("DISABLE", false, true) + off + schedule);
}

TEST(DoNotDisturbTest, UsersOwnSettingStaysOnAndIsSwitchedOffAfterwards) {
    for (const SystemVersion version : {SystemVersion{10, 15}, {11, 0}, {12, 0}}) {
        SCOPED_TRACE(version.major);
        Generation on(version);
        EXPECT_EQ(on.journalOf(&DoNotDisturb::disable), report("DISABLE", false, false));
        on.mac.systemNotificationCenter().userSwitches(true);
        EXPECT_EQ(on.journalOf(&DoNotDisturb::enable), report("ENABLE", true, false) + flagSet);
        EXPECT_TRUE(on.isSilent());
        on.mac.userDefaults().setObject("DNDfromTavro", false);
        DoNotDisturb::disable();
        EXPECT_FALSE(on.isSilent());
    }
}

TEST(DoNotDisturbTest, ClickUsesTheMainScreenAndSkipsEventsThatFail) {
    Generation on({14, 0});
    on.mac.screens().setMain(1); // 1440 x 900 at 1920,180
    on.mac.mouseEvents().location = {2000.5, 300};
    on.mac.mouseEvents().refused = {1, 2};
    EXPECT_EQ(on.journalOf(&DoNotDisturb::toggleByClick),
              "mouseEvents.post 0 1 1 1425,185 0 524288; clock.wait 0.1; "
              "mouseEvents.post 0 1 2 2000.5,600 0 524288");
    on.mac.screens().set({});
    EXPECT_TRUE(on.journalOf(&DoNotDisturb::toggleByClick).starts_with("mouseEvents.post 0 1 1 -15,5 "));
}

TEST(DoNotDisturbTest, NestedPropertyListDecidesOnVersion11) {
    const auto file = [](const PropertyList& value) { return formatPlistXml(toPlist(value)); };
    const auto with = [&](const std::string& inner) {
        return file(Dictionary{{"dnd_prefs", PropertyList::Data(inner.begin(), inner.end())}});
    };
    const std::tuple<std::optional<std::string>, bool, bool> cases[] = {
        {with(formatPlistBinary(toPlist(Dictionary{{"userPref", false}}))), true, false},
        {with(file(Dictionary{{"dndMirroring", true}})), false, false},
        {file(Dictionary{{"apps", 1}}), false, false},
        {file(Dictionary{{"dnd_prefs", "userPref"}}), false, false},
        {file(PropertyList::Array{"userPref"}), false, false},
        {with(file(PropertyList::Array{})), false, false},
        {with("userPref"), false, true}, // no property list
        {"", false, true},
        {std::nullopt, false, true},
    };
    for (const auto& [bytes, isEnabled, isLogged] : cases) {
        SCOPED_TRACE(bytes.value_or("no file"));
        Generation bigSur({11, 0});
        bigSur.mac.files().remove(preferencesFile);
        if (bytes)
            bigSur.mac.files().write(preferencesFile, *bytes);
        EXPECT_EQ(DoNotDisturb::isEnabled(), isEnabled);
        EXPECT_EQ(bigSur.mac.log().printed().size(), isLogged ? 1u : 0u);
    }
}

TEST(DoNotDisturbTest, TheMachinesOwnSwitchTakesPrecedence) {
    const std::string on = "; notificationSilencing.setOn true", off = "; notificationSilencing.setOn false";
    Generation other({14, 0});
    auto& silencing = other.mac.addNotificationSwitch();
    EXPECT_EQ(other.journalOf(&DoNotDisturb::enable), report("ENABLE", false, false) + flagSet + on);
    EXPECT_EQ(other.journalOf(&DoNotDisturb::enable), report("ENABLE", true, true) + flagSet);
    EXPECT_TRUE(DoNotDisturb::isEnabled());
    silencing.fails = true; // in one line, and the next turn-off tries again
    EXPECT_EQ(other.journalOf(&DoNotDisturb::disable), report("DISABLE", false, true) + off);
    EXPECT_EQ(other.mac.log().takeDiagnosed().size(), 1u);
    silencing.fails = false;
    EXPECT_EQ(other.journalOf(&DoNotDisturb::disable), report("DISABLE", true, true) + off + flagCleared);
    EXPECT_EQ(other.journalOf(&DoNotDisturb::disable), report("DISABLE", false, false));
    silencing.state = true; // by the user
    other.journalOf(&DoNotDisturb::disable);
    EXPECT_FALSE(silencing.state);
    const auto onAndOff = [] {
        DoNotDisturb::enable();
        DoNotDisturb::disable();
    };
    EXPECT_EQ(other.journalOf(onAndOff), report("ENABLE", false, false) + flagSet + on + "; " +
                                             report("DISABLE", true, true) + off + flagCleared);
}

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
