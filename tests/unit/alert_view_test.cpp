#include "support/machines/AudioTest.h"

#include "audio/AlertMuteView.h"
#include "audio/MuteMic.h"
#include "audio/ToggleMicMute.h"
#include "platform/simulated/windows/SimulatedOverlayWindow.h"

#include <chrono>

namespace tavro {
namespace {

using namespace std::chrono_literals;

class AlertViewTest : public AudioTest {
protected:
    static std::optional<AlertView>& alert() { return AlertMuteView::shared().alertWindow; }
    static WindowNumber number() {
        return WindowNumber(static_cast<std::uint32_t>(alert()->window->windowNumber()));
    }
    /// What the indicator on screen shows, or nothing.
    std::optional<AlertContent> shown() {
        if (!alert() || !isVisible(number()))
            return std::nullopt;
        const auto view = static_cast<const SimulatedOverlayWindow&>(*alert()->window).contentView();
        return std::dynamic_pointer_cast<const HostingView<AlertView>>(view)->record.body();
    }
    static AlertContent content(bool isMuted) {
        return isMuted ? AlertContent{NamedImage{"alert-mic-off"}, "Mic Muted"}
                       : AlertContent{NamedImage{"alert-mic-on"}, "Mic Unmuted"};
    }
};

TEST_F(AlertViewTest, AppearsInTheLowerMiddleOfTheMainDisplay) {
    mac.screens().set({SimulatedScreens::screen({{0, 0}, {1920, 1080}}, 5),
                       SimulatedScreens::screen({{1920, 0}, {1440, 900}}, 3)});
    mac.screens().setMain(1); // the keyboard focus has no say
    mac.journal().clear();
    alert().emplace(true);
    EXPECT_EQ(joined(mac.journal().lines()),
              "windowServer.createWindow " + std::to_string(alert()->window->windowNumber()) +
                  " 200x100 at 0,0 1 2 true; window.setTitleHidden true; window.setStyleMask 0; "
                  "window.setBackgroundColor 0 0 0 0; window.setMovableByWindowBackground true; "
                  "window.setIgnoresMouseEvents true; window.setLevel 3; window.setCollectionBehavior 17; "
                  "window.orderFrontRegardless; window.setCanHide false; "
                  "window.setFrame 200x200 at 860,130 true; window.setHasShadow false; "
                  "window.setContentView");
    AlertMuteView::shared().closeAlert();
    mac.screens().set({});
    alert().emplace(true);
    EXPECT_EQ(mac.windowServer().find(number())->frame, (Rect{{-100, -50}, {200, 200}}));
}

TEST_F(AlertViewTest, ShowsTheNewStateForOneSecondAndIgnoresPressesMeanwhile) {
    const std::pair<std::vector<std::optional<bool>>, bool> cases[] = {
        {{false}, true}, {{true, true}, false},         {{true, false}, true},
        {{}, false},     {{true, std::nullopt}, false}, {{false, std::nullopt}, true}};
    for (const auto& [before, isMuted] : cases) {
        SCOPED_TRACE(testing::PrintToString(before));
        audio.unplugAll();
        plugInSpeaker("Hall", false); // which is no microphone
        for (const auto mute : before)
            plugInMicrophone("Microphone", mute);
        EXPECT_EQ(MuteMic::isMuted(), !isMuted);
        mac.accessibility().announced.clear();
        toggleMicMute();
        const std::weak_ptr<Window> window = alert()->window;
        mac.mainQueue().advance(999ms);
        mac.journal().clear();
        toggleMicMute();
        EXPECT_EQ(mac.journal().lines(), Lines{});
        EXPECT_EQ(shown(), content(isMuted));
        EXPECT_EQ(MuteMic::isMuted(), before.empty() || isMuted);
        EXPECT_EQ(mac.accessibility().announced, Lines{isMuted ? "Mic Muted" : "Mic Unmuted"});
        mac.mainQueue().advance(1ms);
        EXPECT_FALSE(alert());
        EXPECT_TRUE(window.expired());
    }
}

TEST_F(AlertViewTest, MutesEvenWhenNoWindowCanBeMade) {
    const auto device = plugInMicrophone("Desk");
    mac.windowServer().failNextWindow();
    for (int press = 0; press < 2; ++press) {
        toggleMicMute();
        EXPECT_EQ(alert()->window, nullptr);
        EXPECT_EQ(audio.isMuted(device), true);
    }
    mac.mainQueue().advance(1s);
    EXPECT_FALSE(alert());
}

TEST_F(SimulatedMacTest, IndicatorClosesWhenItsProcessEnds) {
    std::weak_ptr<Window> window;
    {
        Process process(mac);
        toggleMicMute();
        window = AlertMuteView::shared().alertWindow->window;
        ASSERT_FALSE(window.expired());
    }
    EXPECT_TRUE(window.expired());
}

} // namespace
} // namespace tavro
