#include "support/machines/Launch.h"

#include "app/TouchBarController.h"

namespace tavro {
namespace {

constexpr Color red{0.7450980392156863, 0, 0, 0.95};
constexpr Color green{0.3607843137254902, 0.7215686274509804, 0.3607843137254902, 0.95};
constexpr AudioObjectID microphone = 41;

class TouchBarControllerTest : public SimulatedMacTest {
protected:
    /// Image and colour of the only button that the control strip shows.
    void expectShown(const char* image, Color color) {
        const auto shown = mac.controlStrip().shown();
        ASSERT_EQ(shown.size(), 1u);
        EXPECT_EQ(shown[0].title, "");
        EXPECT_EQ(shown[0].image, NamedImage{image});
        EXPECT_EQ(shown[0].bezelColor, color);
    }
};

TEST_F(TouchBarControllerTest, IsInTheControlStripWhilePresentationModeIsOn) {
    Launch launch(mac);
    auto& controller = TouchBarController::shared();
    EXPECT_EQ(controller.touchButton->title, "AC");
    EXPECT_EQ(controller.item->identifier(), "tesk.startItem");
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(mac.controlStrip().shown().size(), 0u);
        const auto former = controller.touchButton;
        launch.switchPresentationMode();
        expectShown("mic-on", green);
        EXPECT_NE(controller.touchButton, former);
        launch.switchPresentationMode();
    }
    mac.audioHardware().otherProgramSetsMute(microphone, true);
    launch.switchPresentationMode();
    expectShown("mic-on", red); // whatever the state, the image is the live one at first
}

TEST_F(TouchBarControllerTest, TouchTogglesTheMicrophonesAndThenTheLook) {
    Launch launch(mac);
    launch.switchPresentationMode();
    mac.journal().clear();
    mac.controlStrip().touch(0);
    EXPECT_EQ(mac.journal().lines(),
              (Lines{"log.print false", "audioHardware.setPropertyData 41 mute inpt 1"}));
    expectShown("mic-on", green);
    mac.mainQueue().runUntilIdle();
    expectShown("mic-off", red);
    mac.controlStrip().touch(0);
    mac.mainQueue().runUntilIdle();
    expectShown("mic-on", green);
    EXPECT_EQ(mac.journal().lines("log.print"), (Lines{"log.print false", "log.print true"}));
    EXPECT_EQ(mac.audioHardware().isMuted(microphone), false);
}

} // namespace
} // namespace tavro
