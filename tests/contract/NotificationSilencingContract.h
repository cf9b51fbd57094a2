#pragma once

#include "Rig.h"

#include "platform/NotificationSilencing.h"

namespace tavro {

/// A machine with a notification server.
template <class R>
concept SilencingRig = Rig<R> && requires(R rig) {
    /// Whether a notification that another program sends now is shown. It is gone afterwards.
    { rig.showsANotification() } -> std::same_as<bool>;
    rig.userSwitchesDoNotDisturbOn();
};

template <SilencingRig R>
class NotificationSilencingContract : public Contract<R> {
protected:
    NotificationSilencing& silencing() { return *this->machine().notificationSilencing(); }
};

TYPED_TEST_SUITE_P(NotificationSilencingContract);

TYPED_TEST_P(NotificationSilencingContract, KeepsNotificationsBackAndLetsThemThroughAgain) {
    EXPECT_TRUE(this->rig.showsANotification());
    for (const bool isOn : {false, true, true, false, false}) {
        EXPECT_TRUE(this->silencing().setOn(isOn));
        EXPECT_EQ(this->silencing().isOn(), isOn);
        EXPECT_EQ(this->rig.showsANotification(), !isOn);
    }
}

TYPED_TEST_P(NotificationSilencingContract, EndsWhatTheUserOrAProcessBeforeHasSwitchedOn) {
    EXPECT_TRUE(this->rig.showsANotification());
    for (const bool isOnByUser : {true, false}) {
        SCOPED_TRACE(isOnByUser);
        if (isOnByUser)
            this->rig.userSwitchesDoNotDisturbOn();
        EXPECT_TRUE(isOnByUser || this->silencing().setOn(true));
        this->rig.relaunch();
        EXPECT_EQ(this->silencing().isOn(), true);
        EXPECT_TRUE(this->silencing().setOn(false));
        EXPECT_TRUE(this->rig.showsANotification());
    }
}

REGISTER_TYPED_TEST_SUITE_P(NotificationSilencingContract, KeepsNotificationsBackAndLetsThemThroughAgain,
                            EndsWhatTheUserOrAProcessBeforeHasSwitchedOn);

} // namespace tavro
