#include "Rig.h"

#include "platform/notifications/NotificationSilencing.h"

namespace tavro {
namespace {

class NotificationSilencingContract : public Contract {
protected:
    NotificationSilencing& silencing() { return *machine().notificationSilencing(); }
};

TEST_F(NotificationSilencingContract, KeepsNotificationsBackAndLetsThemThroughAgain) {
    EXPECT_TRUE(rig->showsANotification());
    for (const bool isOn : {false, true, true, false, false}) {
        EXPECT_TRUE(silencing().setOn(isOn));
        EXPECT_EQ(silencing().isOn(), isOn);
        EXPECT_EQ(rig->showsANotification(), !isOn);
    }
}

TEST_F(NotificationSilencingContract, EndsWhatTheUserOrAProcessBeforeHasSwitchedOn) {
    EXPECT_TRUE(rig->showsANotification());
    for (const bool isOnByUser : {true, false}) {
        SCOPED_TRACE(isOnByUser);
        if (isOnByUser)
            rig->userSwitchesDoNotDisturbOn();
        EXPECT_TRUE(isOnByUser || silencing().setOn(true));
        rig->relaunch();
        EXPECT_EQ(silencing().isOn(), true);
        EXPECT_TRUE(silencing().setOn(false));
        EXPECT_TRUE(rig->showsANotification());
    }
}

} // namespace
} // namespace tavro
