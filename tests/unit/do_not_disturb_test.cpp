#include "support/Launch.h"

#include "notifications/DoNotDisturb.h"
#include "platform/plist/PlistNode.h"

#include <gmock/gmock.h>

#include <functional>
#include <tuple>

namespace tavro {
namespace {

using Dictionary = PropertyList::Dictionary;
constexpr auto identifier = SimulatedNotificationCenter::identifier;
constexpr auto preferencesFile = SimulatedNotificationCenter::preferencesFile;

/// One machine of a generation, with a process on it.
struct Generation {
    explicit Generation(SystemVersion version)
        : mac(version) {}

    Lines journalOf(const std::function<void()>& call) {
        mac.journal().clear();
        call();
        return mac.journal().lines();
    }
    bool flag() { return mac.userDefaults().boolForKey("DNDfromTavro"); }
    bool isSilent() { return mac.systemNotificationCenter().isSilent(); }

    SimulatedMac mac;
    Process process{mac};
};

const Lines click{
    "mouseEvents.post 0 1 1 1905,5 0 524288",  "mouseEvents.post 0 1 2 1905,5 0 524288",  "clock.wait 0.1",
    "mouseEvents.post 0 1 1 400,780 0 524288", "mouseEvents.post 0 1 2 400,780 0 524288",
};

const Lines flagSet{"userDefaults.setObject DNDfromTavro true"};
const Lines flagCleared{"userDefaults.setObject DNDfromTavro false"};
const Lines asked{"accessibility.isProcessTrusted true"};

Lines switched(bool isOn) {
    return {std::string("notificationSilencing.setOn ") + (isOn ? "true" : "false")};
}

Lines operator+(Lines left, const Lines& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Lines report(const std::string& what, bool isEnabled, bool isFromTavro) {
    return {"log.print " + what, std::string("log.print isEnabled ") + (isEnabled ? "true" : "false"),
            std::string("log.print DNDfromTavro ") + (isFromTavro ? "true" : "false")};
}

TEST(DoNotDisturbTest, ClicksSwitchItFromVersion11On) {
    for (const SystemVersion version : {SystemVersion{11, 0}, {12, 0}, {14, 0}}) {
        SCOPED_TRACE(version.major);
        Generation on(version);
        EXPECT_EQ(on.journalOf(&DoNotDisturb::enable),
                  report("ENABLE", false, false) + flagSet + asked + click);
        EXPECT_TRUE(on.isSilent());
        EXPECT_EQ(on.journalOf(&DoNotDisturb::disable), report("DISABLE", true, true) + click + flagCleared);
        EXPECT_FALSE(on.isSilent());
    }
}

TEST(DoNotDisturbTest, PreferencesSwitchItBeforeVersion11) {
    const Lines announce{
        "preferences.synchronize com.apple.notificationcenterui",
        "distributedNotificationCenter.post com.apple.notificationcenterui.dndprefs_changed true"};
    const Lines restart{"runningProcesses.forceTerminate com.apple.notificationcenterui"};
    const auto set = [](const std::string& entry) {
        return Lines{"preferences.setValue com.apple.notificationcenterui " + entry};
    };
    const auto remove = [](const std::string& key) {
        return Lines{"preferences.removeValue com.apple.notificationcenterui " + key};
    };
    Generation catalina({10, 15});
    EXPECT_EQ(catalina.journalOf(&DoNotDisturb::enable),
              report("ENABLE", false, false) + flagSet + set("doNotDisturb true") +
                  set("doNotDisturbDate (a value)") + announce + restart);
    EXPECT_TRUE(catalina.isSilent());
    EXPECT_EQ(catalina.mac.preferences().synchronized(identifier).at("doNotDisturbDate"),
              PropertyList(catalina.mac.clock().now()));
    EXPECT_EQ(catalina.journalOf(&DoNotDisturb::disable),
              report("DISABLE", true, true) + set("doNotDisturb false") + remove("doNotDisturbDate") +
                  announce + restart + set("dndStart 0") + set("dndEnd 1440") + Lines{"clock.wait 0.4"} +
                  remove("dndStart") + remove("dndEnd") + announce);
    EXPECT_FALSE(catalina.isSilent());
    EXPECT_TRUE(catalina.flag());

    catalina.mac.systemNotificationCenter().remove();
    EXPECT_THAT(catalina.journalOf(&DoNotDisturb::disable), testing::Not(testing::IsSupersetOf(restart)));
}

TEST(DoNotDisturbTest, UsersOwnSettingStaysOnAndIsSwitchedOffAfterwards) {
    for (const SystemVersion version : {SystemVersion{10, 15}, {11, 0}, {12, 0}, {13, 0}}) {
        SCOPED_TRACE(version.major);
        Generation on(version);
        EXPECT_EQ(on.journalOf(&DoNotDisturb::disable), report("DISABLE", false, false));
        for (const bool enablesBefore : {true, false}) {
            on.mac.systemNotificationCenter().userSwitches(true);
            on.mac.userDefaults().setObject("DNDfromTavro", false);
            if (enablesBefore) {
                EXPECT_EQ(on.journalOf(&DoNotDisturb::enable), report("ENABLE", true, false) + flagSet);
                EXPECT_TRUE(on.isSilent());
            }
            DoNotDisturb::disable();
            EXPECT_FALSE(on.isSilent());
        }
    }
}

TEST(DoNotDisturbTest, ClickUsesTheMainScreenAndSkipsEventsThatFail) {
    Generation on({14, 0});
    on.mac.screens().setMain(1); // 1440 x 900 at 1920,180
    on.mac.mouseEvents().location = {2000.5, 300};
    on.mac.mouseEvents().refused = {1, 2};
    EXPECT_EQ(on.journalOf(&DoNotDisturb::toggleByClick),
              (Lines{"mouseEvents.post 0 1 1 1425,185 0 524288", "clock.wait 0.1",
                     "mouseEvents.post 0 1 2 2000.5,600 0 524288"}));
    on.mac.screens().set({});
    EXPECT_EQ(on.journalOf(&DoNotDisturb::toggleByClick),
              (Lines{"mouseEvents.post 0 1 1 -15,5 0 524288", "mouseEvents.post 0 1 2 -15,5 0 524288",
                     "clock.wait 0.1", "mouseEvents.post 0 1 1 2000.5,-300 0 524288",
                     "mouseEvents.post 0 1 2 2000.5,-300 0 524288"}));
    EXPECT_FALSE(on.isSilent());
}

TEST(DoNotDisturbTest, NestedPropertyListDecidesOnVersion11) {
    const auto file = [](const PropertyList& value) { return formatPlistXml(toPlist(value)); };
    const auto with = [&](const std::string& inner) {
        return file(Dictionary{{"dnd_prefs", PropertyList::Data(inner.begin(), inner.end())}});
    };
    const std::string undecoded = "not a property list";
    const std::tuple<const char*, std::string, bool, std::string> cases[] = {
        {"userPref is false", with(formatPlistBinary(toPlist(Dictionary{{"userPref", false}}))), true, ""},
        {"no userPref", with(file(Dictionary{{"dndMirroring", true}})), false, ""},
        {"no dnd_prefs", file(Dictionary{{"apps", 1}}), false, ""},
        {"dnd_prefs is no data", file(Dictionary{{"dnd_prefs", "userPref"}}), false, ""},
        {"the file is a list", file(PropertyList::Array{"userPref"}), false, ""},
        {"dnd_prefs is a list", with(file(PropertyList::Array{})), false, ""},
        {"dnd_prefs is no property list", with("userPref"), false, undecoded},
        {"the file is empty", "", false, undecoded},
    };
    for (const auto& [what, bytes, isEnabled, complaint] : cases) {
        SCOPED_TRACE(what);
        Generation bigSur({11, 0});
        bigSur.mac.files().write(preferencesFile, bytes);
        EXPECT_EQ(DoNotDisturb::isEnabled(), isEnabled);
        ASSERT_EQ(bigSur.mac.log().printed().size(), complaint.empty() ? 0u : 1u);
        if (!complaint.empty()) {
            EXPECT_THAT(bigSur.mac.log().printed().front(), testing::HasSubstr(complaint));
        }
    }
    Generation withoutFile({11, 0});
    withoutFile.mac.files().remove(preferencesFile);
    EXPECT_FALSE(DoNotDisturb::isEnabled());
    EXPECT_EQ(withoutFile.mac.log().printed().size(), 1u);
}

TEST(DoNotDisturbTest, MachinesOwnSwitchIsUsedWhereThereIsOne) {
    Generation other({14, 0});
    auto& silencing = other.mac.addNotificationSwitch();
    EXPECT_EQ(other.journalOf(&DoNotDisturb::enable),
              report("ENABLE", false, false) + flagSet + switched(true));
    EXPECT_TRUE(DoNotDisturb::isEnabled());
    EXPECT_EQ(other.journalOf(&DoNotDisturb::enable), report("ENABLE", true, true) + flagSet);
    silencing.fails = true; // in one line, and the next turn-off tries again
    EXPECT_EQ(other.journalOf(&DoNotDisturb::disable), report("DISABLE", false, true) + switched(false));
    EXPECT_EQ(other.mac.log().takeDiagnosed().size(), 1u);
    silencing.fails = false;
    EXPECT_EQ(other.journalOf(&DoNotDisturb::disable),
              report("DISABLE", true, true) + switched(false) + flagCleared);
    EXPECT_EQ(other.journalOf(&DoNotDisturb::disable), report("DISABLE", false, false));
    silencing.state = true; // by the user
    DoNotDisturb::disable();
    EXPECT_FALSE(silencing.state);
}

} // namespace
} // namespace tavro
