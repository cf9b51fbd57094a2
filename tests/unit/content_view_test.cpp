#include "support/machines/Launch.h"

#include "platform/simulated/windows/SimulatedPopover.h"
#include "platform/simulated/windows/SimulatedTitledWindow.h"
#include "platform/windows/Popover.h"
#include "popover/ContentView.h"
#include "settings/Constants.h"

#include <chrono>
#include <tuple>

namespace tavro {
namespace {

class ContentViewTest : public SimulatedMacTest {
protected:
    Launch launch{mac};
    const ContentView view = content();

    ContentView content() {
        mac.mainQueue().runUntilIdle();
        const auto& popover = static_cast<SimulatedPopover&>(*launch.delegate.popover);
        return static_cast<const HostingView<ContentView>&>(*popover.contentView()).record;
    }
};

TEST_F(ContentViewTest, SwitchInvertsAtOnceAndTogglesAfterTheAnimation) {
    ASSERT_TRUE(launch.delegate.popover->isShown());
    for (const bool turnsOn : {true, false}) {
        SCOPED_TRACE(turnsOn);
        view.tapHeader();
        mac.journal().clear();
        EXPECT_EQ(UserSettings::shared().tavroIsOn(), turnsOn);
        mac.mainQueue().advance(std::chrono::milliseconds(229));
        EXPECT_EQ(mac.journal().lines(), Lines{});
        mac.mainQueue().advance(std::chrono::milliseconds(1));
        EXPECT_EQ(mac.journal().lines().front(), "popover.close");
        EXPECT_EQ(mac.journal().lines("log.print Turn O").size(), 1u);
        EXPECT_EQ(launch.shownImage(), turnsOn ? "menubar-on" : "menubar-off");
    }
}

TEST_F(ContentViewTest, ARowFlipsItsOptionOrOpensPreferencesForAMissingWallpaper) {
    constexpr std::size_t wallpaper = 4;
    const std::tuple<std::size_t, bool, bool> taps[] = {
        {0, false, false},        {3, false, false},
        {wallpaper, true, false}, {wallpaper, false, false}, // off
        {wallpaper, false, true},
    };
    for (const auto& [row, hasPicture, opens] : taps) {
        SCOPED_TRACE(row);
        mac.userDefaults().setObject(Constants::wallpaperFileKey, hasPicture);
        const auto before = UserSettings::shared().options();
        view.tapOption(row);
        for (std::size_t i = 0; i < before.size(); ++i)
            EXPECT_EQ(UserSettings::shared().options()[i].isOn, before[i].isOn != (i == row)) << i;
        EXPECT_EQ(launch.delegate.preferenceView.has_value(), opens);
    }
    const auto lines = mac.journal().lines();
    view.tapOption(5);
    EXPECT_EQ(mac.journal().lines(), lines);
}

using BannerTest = SimulatedMacTest;

TEST_F(BannerTest, AppearsOnlyForANewerVersionAndOpensTheChangeLog) {
    const std::pair<const char*, bool> cases[] = {
        {R"({"version":"2.10.0"})", true}, {R"({"version":"2.9.3"})", false}, {"{", false}};
    for (const auto& [record, hasBanner] : cases) {
        SCOPED_TRACE(record);
        Launch launch(mac);
        ContentView now(UserSettings::shared(), VersionObserver::shared(), launch.delegate);
        EXPECT_FALSE(now.banner());
        int changes = 0;
        const auto observations = now.willChange([&changes] { ++changes; });
        mac.urlSession()->answer(record);
        mac.mainQueue().runUntilIdle();
        EXPECT_EQ(changes, 2);
        ASSERT_EQ(now.banner().has_value(), hasBanner);
        now.tapBanner();
        EXPECT_EQ(mac.journal().lines().back(), "workspace.open https://vantrelo.example/changelog");
    }
}

class PreferencesTest : public ContentViewTest {
protected:
    SimulatedTitledWindow& window() {
        return static_cast<SimulatedTitledWindow&>(*launch.delegate.preferenceView->window);
    }
};

TEST_F(PreferencesTest, OpenWindowIsBroughtToTheFrontInsteadOfASecondOne) {
    mac.journal().clear();
    launch.delegate.openPreferenceWindow();
    const auto number = std::to_string(window().windowNumber());
    EXPECT_EQ(joined(mac.journal().lines()),
              "windowServer.createWindow " + number +
                  " 400x360 at 0,0 32775 2 false; "
                  "window.center; window.setTitle \"\"; window.setContentView; window.addTitlebarAccessory; "
                  "window.setLevel 0; window.orderFront; window.makeKeyAndOrderFront; "
                  "window.orderFrontRegardless");
    EXPECT_EQ(launch.delegate.preferenceView->state->pageIndex.get(), 0);
    EXPECT_EQ(static_cast<const HostingView<PreferenceView>&>(*window().contentView()).record.window.get(),
              &window());
    mac.journal().clear();
    launch.delegate.openPreferenceWindow();
    EXPECT_EQ(mac.journal().lines(), Lines{"window.makeKeyAndOrderFront"});
    window().closeByUser();
    mac.windowServer().failNextWindow();
    launch.delegate.openPreferenceWindow();
    EXPECT_FALSE(launch.delegate.preferenceView->window);
    launch.delegate.openPreferenceWindow();
    EXPECT_TRUE(launch.delegate.preferenceView->window);
}

} // namespace
} // namespace tavro
