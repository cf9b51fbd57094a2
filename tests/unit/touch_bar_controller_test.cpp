#include "support/Launch.h"

#include "app/TouchBarController.h"

#include <gtest/gtest.h>

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
        ASSERT_TRUE(shown[0].bezelColor);
        EXPECT_EQ(*shown[0].bezelColor, color);
    }
    void otherProgramSetsMute(bool mute) {
        mac.audioHardware().otherProgramSetsMute(microphone, mute);
        mac.mainQueue().runUntilIdle();
    }
};

TEST_F(TouchBarControllerTest, IsInTheControlStripWhilePresentationModeIsOn) {
    Launch launch(mac);
    EXPECT_EQ(TouchBarController::shared().touchButton->title, "AC");
    EXPECT_EQ(TouchBarController::shared().item->identifier(), "tesk.startItem");
    const auto item = TouchBarController::shared().item;
    std::shared_ptr<TouchBarButton> former;
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(mac.controlStrip().shown().size(), 0u);
        launch.switchPresentationMode();
        expectShown("mic-on", green);
        EXPECT_EQ(TouchBarController::shared().item, item);
        EXPECT_NE(TouchBarController::shared().touchButton, former);
        former = TouchBarController::shared().touchButton;
        launch.switchPresentationMode();
    }
    EXPECT_EQ(mac.controlStrip().shown().size(), 0u);
}

TEST_F(TouchBarControllerTest, StartsWithTheLiveImageAndTheColourOfTheState) {
    mac.images().removeResource("mic-on");
    Launch launch(mac);
    otherProgramSetsMute(true);
    launch.switchPresentationMode();
    ASSERT_EQ(mac.controlStrip().shown().size(), 1u);
    EXPECT_EQ(mac.controlStrip().shown()[0].image, std::nullopt); // which is no obstacle
    EXPECT_EQ(mac.controlStrip().shown()[0].bezelColor, red);
    EXPECT_EQ(mac.log().takeDiagnosed().size(), 1u);
    otherProgramSetsMute(false);
    otherProgramSetsMute(true);
    expectShown("mic-off", red);
    EXPECT_EQ(mac.log().takeDiagnosed().size(), 2u);
}

TEST_F(TouchBarControllerTest, TouchTogglesTheMicrophonesAndThenTheLook) {
    const auto other = mac.audioHardware().plugIn(SimulatedAudioHardware::microphone("Desk"));
    Launch launch(mac);
    launch.switchPresentationMode();
    mac.journal().clear();
    mac.controlStrip().touch(0);
    EXPECT_EQ(mac.journal().lines(), (Lines{"log.print false", "audioHardware.setPropertyData 41 mute inpt 1",
                                            "audioHardware.setPropertyData 43 mute inpt 1"}));
    expectShown("mic-on", green);
    mac.mainQueue().runUntilIdle();
    expectShown("mic-off", red);

    mac.controlStrip().touch(0);
    mac.mainQueue().runUntilIdle();
    expectShown("mic-on", green);
    EXPECT_EQ(mac.journal().lines("log.print"), (Lines{"log.print false", "log.print true"}));
    EXPECT_EQ(mac.audioHardware().isMuted(microphone), false);
    EXPECT_EQ(mac.audioHardware().isMuted(other), false);
}

} // namespace
} // namespace tavro
