#include "support/Launch.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

class UserSettingsTest : public SimulatedMacTest {
protected:
    /// What user defaults hold under the option keys, in catalogue order.
    Lines stored() {
        Lines values;
        for (const auto* key :
             {"hideDesktop", "disableNotification", "hideApps", "muteSpeaker", "changeWallpaper"}) {
            const auto value = mac.userDefaults().object(key);
            const auto* boolean = value ? value->as<bool>() : nullptr;
            values.push_back(!boolean ? "not a Boolean" : *boolean ? "on" : "off");
        }
        return values;
    }
    static Lines states(const UserSettings& settings) {
        Lines values;
        for (const auto& option : settings.options())
            values.push_back(option.isOn ? "on" : "off");
        return values;
    }
};

TEST_F(UserSettingsTest, FirstLaunchHasTheCatalogueAndStoresIt) {
    const Launch launch(mac);
    const auto& settings = UserSettings::shared();
    EXPECT_EQ(settings.options(), (std::vector<OptionItem>{
                                      {"hideDesktop", "Hide desktop icons", true},
                                      {"disableNotification", "Disable notification", true},
                                      {"hideApps", "Hide active apps", true},
                                      {"muteSpeaker", "Turn off speaker", false},
                                      {"changeWallpaper", "Change wallpaper", false},
                                  }));
    EXPECT_FALSE(settings.tavroIsOn());
    EXPECT_EQ(stored(), (Lines{"on", "on", "on", "off", "off"}));
}

TEST_F(UserSettingsTest, StoredValuesOfAnyTypeAreReadAsBooleansAndRepaired) {
    const Lines keys{"hideDesktop", "disableNotification", "hideApps", "muteSpeaker", "changeWallpaper"};
    const std::pair<PropertyList, bool> values[] = {
        {true, true}, {false, false}, {"yes", true}, {2, true}, {PropertyList::Array{true}, false}};
    for (const auto& [value, isOn] : values)
        for (std::size_t index = 0; index < keys.size(); ++index) {
            SCOPED_TRACE(keys[index] + (isOn ? " is on" : " is off"));
            SimulatedMac other;
            other.userDefaults().setObject(keys[index], value);
            const Launch launch(other);
            EXPECT_EQ(UserSettings::shared().options()[index].isOn, isOn);
            EXPECT_EQ(other.userDefaults().object(keys[index]), PropertyList(isOn));
        }
}

TEST_F(UserSettingsTest, PresentationModeIsOffAfterEveryLaunchWhateverIsStored) {
    for (const PropertyList& value :
         {PropertyList(true), PropertyList("YES"), PropertyList(PropertyList::Array{})}) {
        SimulatedMac other;
        other.userDefaults().setObject("tavro", value);
        const Launch launch(other);
        EXPECT_FALSE(UserSettings::shared().tavroIsOn());
        EXPECT_EQ(other.userDefaults().object("tavro"), PropertyList(false));
    }
}

TEST_F(UserSettingsTest, WithoutTheLaunchTheStoredStateIsRead) {
    mac.userDefaults().setObject("tavro", "yes");
    Process process(mac);
    EXPECT_TRUE(UserSettings::shared().tavroIsOn());
}

TEST_F(UserSettingsTest, OneSwitchRewritesAllFiveKeysInOrder) {
    const Launch launch(mac);
    mac.journal().clear();
    UserSettings::shared().setOptionIsOn(3, true);
    EXPECT_EQ(mac.journal().lines(), (Lines{
                                         "userDefaults.setObject hideDesktop true",
                                         "userDefaults.setObject disableNotification true",
                                         "userDefaults.setObject hideApps true",
                                         "userDefaults.setObject muteSpeaker true",
                                         "userDefaults.setObject changeWallpaper false",
                                     }));
    mac.journal().clear();
    UserSettings::shared().setOptionIsOn(5, true);
    EXPECT_EQ(mac.journal().lines(), Lines{});
}

TEST_F(UserSettingsTest, OptionsOutliveTheProcessAndTheModeDoesNot) {
    {
        const Launch launch(mac);
        UserSettings::shared().setOptionIsOn(0, false);
        UserSettings::shared().setOptionIsOn(4, true);
        UserSettings::shared().setTavroIsOn(true);
        EXPECT_EQ(mac.userDefaults().object("tavro"), PropertyList(true));
        mac.mainQueue().runUntilIdle();
    }
    EXPECT_TRUE(mac.userDefaults().boolForKey("tavro"));
    const Launch launch(mac);
    EXPECT_EQ(states(UserSettings::shared()), (Lines{"off", "on", "on", "off", "on"}));
    EXPECT_FALSE(UserSettings::shared().tavroIsOn());
}

TEST_F(UserSettingsTest, WhatCannotBeWrittenStaysInForceUntilTheProcessEnds) {
    { const Launch launch(mac); }
    {
        const Launch launch(mac);
        mac.userDefaults().failWrites = true;
        UserSettings::shared().setOptionIsOn(0, false);
        mac.mainQueue().runUntilIdle();
        UserSettings::shared().setOptionIsOn(1, false);
        mac.mainQueue().runUntilIdle();
        EXPECT_EQ(stored(), (Lines{"off", "off", "on", "off", "off"}));
        EXPECT_EQ(mac.log().takeDiagnosed().size(), 1u);
    }
    mac.userDefaults().failWrites = false;
    const Launch launch(mac);
    EXPECT_EQ(states(UserSettings::shared()), (Lines{"on", "on", "on", "off", "off"}));
}

TEST_F(UserSettingsTest, ObserversAreToldBeforeEitherFieldAndItsStoreChange) {
    const Launch launch(mac);
    auto& settings = UserSettings::shared();
    Lines seen;
    const auto observations = settings.willChange([&] {
        const auto stored = mac.userDefaults().boolForKey("tavro");
        seen.push_back(states(settings)[0] + (settings.tavroIsOn() ? " on" : " off") +
                       (stored ? " on" : " off"));
    });
    settings.setTavroIsOn(true);
    settings.setOptionIsOn(0, false);
    settings.setTavroIsOn(false);
    EXPECT_EQ(seen, (Lines{"on off off", "on on on", "off on on"}));
}

} // namespace
} // namespace tavro
