#include "support/machines/Launch.h"

namespace tavro {
namespace {

class UserSettingsTest : public SimulatedMacTest {
protected:
    static Lines states(const UserSettings& settings) {
        Lines values;
        for (const auto& option : settings.options())
            values.push_back(option.isOn ? "on" : "off");
        return values;
    }
};

TEST_F(UserSettingsTest, FirstLaunchStoresTheCatalogueDefaults) {
    const Process process(mac);
    EXPECT_EQ(UserSettings::shared().options(), (std::vector<OptionItem>{
                                                    {"hideDesktop", "Hide desktop icons", true},
                                                    {"disableNotification", "Disable notification", true},
                                                    {"hideApps", "Hide active apps", true},
                                                    {"muteSpeaker", "Turn off speaker", false},
                                                    {"changeWallpaper", "Change wallpaper", false},
                                                }));
    EXPECT_FALSE(UserSettings::shared().tavroIsOn());
    for (const auto& option : UserSettings::shared().options())
        EXPECT_EQ(mac.userDefaults().object(option.id), PropertyList(option.isOn)) << option.id;
}

TEST_F(UserSettingsTest, StoredValuesOfAnyTypeBecomeBooleans) {
    mac.userDefaults().setObject("tavro", "yes");
    mac.userDefaults().setObject("hideDesktop", false);
    mac.userDefaults().setObject("disableNotification", PropertyList::Array{true});
    mac.userDefaults().setObject("hideApps", 2);
    mac.userDefaults().setObject("muteSpeaker", "yes");
    {
        Process process(mac);
        EXPECT_EQ(states(UserSettings::shared()), (Lines{"off", "off", "on", "on", "off"}));
        EXPECT_EQ(mac.userDefaults().object("hideApps"), PropertyList(true));
        EXPECT_TRUE(UserSettings::shared().tavroIsOn());
    }
    const Launch launch(mac); // which always begins with presentation mode off
    EXPECT_FALSE(UserSettings::shared().tavroIsOn());
}

TEST_F(UserSettingsTest, ObserversAreNotifiedBeforeEachChange) {
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
    settings.setOptionIsOn(5, true); // which is none
    settings.setTavroIsOn(false);
    EXPECT_EQ(seen, (Lines{"on off off", "on on on", "off on on"}));
}

} // namespace
} // namespace tavro
