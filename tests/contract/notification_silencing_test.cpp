#include "support/machines/TestMachine.h"

#include "platform/notifications/NotificationSilencing.h"

namespace tavro {
namespace {

class NotificationSilencingContract : public Contract {
protected:
    NotificationSilencing& silencing() { return *machine().notificationSilencing(); }
    bool setOn(bool isOn) {
        std::optional<bool> result;
        silencing().setOn(isOn, [&](bool isDone) { result = isDone; });
        EXPECT_EQ(result, std::nullopt) << "within the call";
        EXPECT_TRUE(waitUntil([&] { return result.has_value(); }));
        return result == true;
    }
    std::optional<bool> isOn() {
        std::optional<std::optional<bool>> result;
        silencing().askIsOn([&](auto isOn) { result = isOn; });
        EXPECT_TRUE(waitUntil([&] { return result.has_value(); }));
        return result.value_or(std::nullopt);
    }
};

TEST_F(NotificationSilencingContract, KeepsNotificationsBackAndLetsThemThroughAgain) {
    EXPECT_TRUE(testMachine->showsANotification());
    for (const bool isOn : {false, true, true, false, false}) {
        EXPECT_TRUE(setOn(isOn));
        EXPECT_EQ(this->isOn(), isOn);
        EXPECT_EQ(testMachine->showsANotification(), !isOn);
    }
}

TEST_F(NotificationSilencingContract, EndsWhatTheUserOrAProcessBeforeHasSwitchedOn) {
    EXPECT_TRUE(testMachine->showsANotification());
    for (const bool isOnByUser : {true, false}) {
        SCOPED_TRACE(isOnByUser);
        if (isOnByUser)
            testMachine->userSwitchesDoNotDisturbOn();
        EXPECT_TRUE(isOnByUser || setOn(true));
        testMachine->relaunch();
        EXPECT_EQ(isOn(), true);
        EXPECT_TRUE(setOn(false));
        EXPECT_TRUE(testMachine->showsANotification());
    }
}

} // namespace
} // namespace tavro
