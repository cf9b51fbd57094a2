#include "AudioTest.h"

#include "audio/AlertMuteView.h"
#include "audio/ToggleMicMute.h"
#include "platform/simulated/windows/SimulatedOverlayWindow.h"

#include <gtest/gtest.h>

#include <chrono>
#include <tuple>

namespace tavro {
namespace {

using namespace std::chrono_literals;

class AlertViewTest : public AudioTest {
protected:
    static std::optional<AlertView>& alert() { return AlertMuteView::shared().alertWindow; }
    static WindowNumber number(const Window& window) {
        return WindowNumber(static_cast<std::uint32_t>(window.windowNumber()));
    }
    void setMainDisplay(Size size) { mac.screens().set({SimulatedScreens::screen({{0, 0}, size}, 1)}); }
    /// The text of the indicator on screen, or nothing.
    std::string shownText() {
        if (!alert() || !isVisible(number(*alert()->window)))
            return "";
        const auto& window = static_cast<const SimulatedOverlayWindow&>(*alert()->window);
        return std::dynamic_pointer_cast<const HostingView<AlertView>>(window.contentView())
            ->record.body()
            .text;
    }
};

TEST_F(AlertViewTest, ConfiguresItsWindowInOrder) {
    setMainDisplay({1440, 900});
    mac.journal().clear();
    alert().emplace(true);
    const auto lines = mac.journal().lines();
    ASSERT_FALSE(lines.empty());
    EXPECT_TRUE(lines[0].starts_with("windowServer.createWindow ")) << lines[0];
    EXPECT_TRUE(lines[0].ends_with(" 200x100 at 0,0 1 2 true")) << lines[0];
    EXPECT_EQ(joined(Lines(lines.begin() + 1, lines.end())),
              "window.setTitleHidden true; window.setStyleMask 0; window.setBackgroundColor 0 0 0 0; "
              "window.setMovableByWindowBackground true; window.setIgnoresMouseEvents true; "
              "window.setLevel 3; window.setCollectionBehavior 17; window.orderFrontRegardless; "
              "window.setCanHide false; window.setFrame 200x200 at 620,100 true; "
              "window.setHasShadow false; window.setContentView");
    EXPECT_EQ(shownText(), "Mic Muted");
}

TEST_F(AlertViewTest, AppearsLowOnTheMainDisplay) {
    const std::pair<std::vector<Screen>, Point> cases[] = {
        {{SimulatedScreens::screen({{0, 0}, {1920, 1080}}, 5),
          SimulatedScreens::screen({{1920, 0}, {1440, 900}}, 3)},
         {860, 130}},
        {{}, {-100, -50}},
    };
    for (const auto& [screens, origin] : cases) {
        mac.screens().set(screens);
        if (screens.size() > 1)
            mac.screens().setMain(1); // the keyboard focus has no say
        alert().emplace(false);
        EXPECT_EQ(mac.windowServer().find(number(*alert()->window))->frame, (Rect{origin, {200, 200}}));
        AlertMuteView::shared().closeAlert();
    }
}

TEST_F(AlertViewTest, ShowsWhetherTheMicrophoneIsMuted) {
    const std::tuple<bool, const char*, const char*> cases[] = {{true, "alert-mic-off", "Mic Muted"},
                                                                {false, "alert-mic-on", "Mic Unmuted"}};
    for (const auto& [mutestate, image, text] : cases) {
        alert().emplace(mutestate);
        EXPECT_EQ(alert()->body(), (AlertContent{NamedImage{image}, text}));
        mac.images().removeResource(image);
        EXPECT_EQ(alert()->body(), (AlertContent{std::nullopt, text}));
        EXPECT_EQ(mac.log().takeDiagnosed().size(), 1u);
        AlertMuteView::shared().closeAlert();
    }
}

TEST_F(AlertViewTest, ShowsTheNewStateForOneSecondAndIgnoresPressesMeanwhile) {
    const std::tuple<std::vector<bool>, const char*, bool> cases[] = {
        {{false}, "Mic Muted", true},
        {{true, true}, "Mic Unmuted", false},
        {{true, false}, "Mic Muted", true},
        {{}, "Mic Unmuted", false},
    };
    for (const auto& [before, text, after] : cases) {
        SCOPED_TRACE(testing::PrintToString(before));
        audio.unplugAll();
        std::vector<AudioObjectID> devices;
        for (const bool mute : before)
            devices.push_back(plugInMicrophone("Microphone", mute));
        toggleMicMute();
        const std::weak_ptr<Window> window = alert()->window;
        mac.mainQueue().advance(999ms);
        mac.journal().clear();
        toggleMicMute();
        EXPECT_EQ(mac.journal().lines(), Lines{});
        EXPECT_EQ(shownText(), text);
        for (const auto device : devices)
            EXPECT_EQ(audio.isMuted(device), after);
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
