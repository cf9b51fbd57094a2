#include "support/machines/Launch.h"

#include "notifications/DoNotDisturb.h"
#include "platform/plist/PlistNode.h"

#include <gtest/gtest.h>

#include <functional>
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

TEST(DoNotDisturbTest, MachinesOwnSwitchIsUsedWhereThereIsOne) {
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

} // namespace
} // namespace tavro
