#include "support/Launch.h"

#include "notifications/DoNotDisturb.h"
#include "platform/plist/PlistNode.h"

#include <gmock/gmock.h>

#include <functional>

namespace tavro {
namespace {

using testing::HasSubstr;
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

TEST(DoNotDisturbTest, EachGenerationIsSilencedAndHeardAgainItsOwnWay) {
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

TEST(DoNotDisturbTest, BeforeVersion11ThePreferencesAreWrittenAndTheProcessStartsAnew) {
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

TEST(DoNotDisturbTest, WhatTheUserHadSwitchedOnStaysDuringAndIsSwitchedOffAfter) {
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

TEST(DoNotDisturbTest, TheClickGoesByTheMainScreenAndSkipsWhatCannotBeCreated) {
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

std::string file(const PropertyList& value, bool isBinary) {
    return isBinary ? formatPlistBinary(toPlist(value)) : formatPlistXml(toPlist(value));
}

PropertyList data(const std::string& bytes) {
    return PropertyList::Data(bytes.begin(), bytes.end());
}

TEST(DoNotDisturbTest, OnVersion11TheInnerPropertyListDecides) {
    for (const bool isBinary : {true, false}) {
        const auto with = [&](const Dictionary& inner) {
            return file(
                Dictionary{{"apps", PropertyList::Array{1}}, {"dnd_prefs", data(file(inner, !isBinary))}},
                isBinary);
        };
        const struct {
            const char* what;
            std::string bytes;
            bool isEnabled;
            const char* complaint = "";
        } cases[] = {
            {"userPref is a dictionary", with({{"userPref", Dictionary{{"enabled", true}}}}), true},
            {"userPref is false", with({{"userPref", false}}), true},
            {"no userPref", with({{"dndMirroring", true}}), false},
            {"no dnd_prefs", file(Dictionary{{"apps", 1}}, isBinary), false},
            {"dnd_prefs is no data", file(Dictionary{{"dnd_prefs", "userPref"}}, isBinary), false},
            {"the file is a list", file(PropertyList::Array{"userPref"}, isBinary), false},
            {"dnd_prefs is a list",
             file(Dictionary{{"dnd_prefs", data(file(PropertyList::Array{}, isBinary))}}, isBinary), false},
            {"dnd_prefs is no property list", file(Dictionary{{"dnd_prefs", data("userPref")}}, isBinary),
             false, "not a property list"},
            {"the file is no property list", "userPref", false, "not a property list"},
            {"the file is empty", "", false, "not a property list"},
        };
        for (const auto& [what, bytes, isEnabled, complaint] : cases) {
            SCOPED_TRACE(what);
            Generation bigSur({11, 0});
            bigSur.mac.files().write(preferencesFile, bytes);
            EXPECT_EQ(DoNotDisturb::isEnabled(), isEnabled);
            ASSERT_EQ(bigSur.mac.log().printed().size(), *complaint ? 1u : 0u);
            if (*complaint) {
                EXPECT_THAT(bigSur.mac.log().printed().front(), HasSubstr(complaint));
            }
        }
    }
}

TEST(DoNotDisturbTest, APreferenceFileThatCannotBeReadIsOneLineAndCountsAsOff) {
    Generation bigSur({11, 0});
    bigSur.mac.files().remove(preferencesFile);
    EXPECT_FALSE(DoNotDisturb::isEnabled());
    EXPECT_EQ(bigSur.mac.log().printed().size(), 1u);
    bigSur.mac.files().write(std::string(preferencesFile) + "/folder", "");
    EXPECT_FALSE(DoNotDisturb::isEnabled());
    EXPECT_EQ(bigSur.mac.log().printed().size(), 2u);
}

TEST(DoNotDisturbTest, AMachineWithASwitchOfItsOwnIsSwitchedByIt) {
    Generation other({14, 0});
    auto& silencing = other.mac.addNotificationSwitch();
    EXPECT_EQ(other.journalOf(&DoNotDisturb::enable),
              report("ENABLE", false, false) + flagSet + switched(true));
    EXPECT_TRUE(DoNotDisturb::isEnabled());
    EXPECT_EQ(other.journalOf(&DoNotDisturb::enable), report("ENABLE", true, true) + flagSet);
    EXPECT_EQ(other.journalOf(&DoNotDisturb::disable),
              report("DISABLE", true, true) + switched(false) + flagCleared);
    EXPECT_EQ(other.journalOf(&DoNotDisturb::disable), report("DISABLE", false, false));
    silencing.state = true; // by the user
    DoNotDisturb::disable();
    EXPECT_FALSE(silencing.state);
}

TEST(DoNotDisturbTest, ASwitchThatFailsIsOneLineAndTriedAgainByTheNextTurnOff) {
    Generation other({14, 0});
    auto& silencing = other.mac.addNotificationSwitch();
    DoNotDisturb::enable();
    silencing.fails = true;
    EXPECT_EQ(other.journalOf(&DoNotDisturb::disable), report("DISABLE", false, true) + switched(false));
    EXPECT_TRUE(other.flag());
    silencing.fails = false;
    DoNotDisturb::disable();
    EXPECT_FALSE(silencing.state);
    EXPECT_FALSE(other.flag());
    EXPECT_EQ(other.mac.log().takeDiagnosed().size(), 1u);
}

} // namespace
} // namespace tavro
