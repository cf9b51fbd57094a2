#include "support/TestMachine.h"

#include "platform/notifications/NotificationSilencing.h"

namespace tavro {
namespace {

class NotificationSilencingContract : public Contract {
protected:
    NotificationSilencing& silencing() { return *machine().notificationSilencing(); }
};

TEST_F(NotificationSilencingContract, KeepsNotificationsBackAndLetsThemThroughAgain) {
    EXPECT_TRUE(testMachine->showsANotification());
    for (const bool isOn : {false, true, true, false, false}) {
        EXPECT_TRUE(silencing().setOn(isOn));
        EXPECT_EQ(silencing().isOn(), isOn);
        EXPECT_EQ(testMachine->showsANotification(), !isOn);
    }
}

TEST_F(NotificationSilencingContract, EndsWhatTheUserOrAProcessBeforeHasSwitchedOn) {
    EXPECT_TRUE(testMachine->showsANotification());
    for (const bool isOnByUser : {true, false}) {
        SCOPED_TRACE(isOnByUser);
        if (isOnByUser)
            testMachine->userSwitchesDoNotDisturbOn();
        EXPECT_TRUE(isOnByUser || silencing().setOn(true));
        testMachine->relaunch();
        EXPECT_EQ(silencing().isOn(), true);
        EXPECT_TRUE(silencing().setOn(false));
        EXPECT_TRUE(testMachine->showsANotification());
    }
}

} // namespace
} // namespace tavro
