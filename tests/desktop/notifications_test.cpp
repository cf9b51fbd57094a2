#include "support/desktop/DesktopTest.h"
#include "support/servers/NotificationServer.h"

#include <csignal>

class Notifications : public DesktopTest,
                      public testing::WithParamInterface<const NotificationServer::Kind*> {
protected:
    /// The program has a configuration folder of its own; GSettings are the session's.
    Notifications() {
        const auto settings = std::filesystem::path(std::getenv("XDG_CONFIG_HOME")) / "glib-2.0";
        std::filesystem::create_directories(settings / "settings");
        std::filesystem::create_directory_symlink(settings, config.path() / "glib-2.0");
    }

    /// Until the server has heard what the program has set.
    testing::AssertionResult becomes(NotificationServer& notifications, bool isOn) {
        return server.eventually(isOn ? "Do Not Disturb on" : "Do Not Disturb off",
                                 [&] { return notifications.isOn() == isOn; });
    }
    /// Turns off, and closes what a server shows then that it had kept back, as some do.
    void turnOff(TavroProcess& tavro, NotificationServer& notifications) {
        EXPECT_TRUE(notifications.keepsANotificationBack());
        toggle(tavro);
        EXPECT_TRUE(becomes(notifications, false));
        const auto shows = [&] { return notifications.showsAny(); };
        EXPECT_TRUE(GetParam() != &NotificationServer::dunst ||
                    server.eventually("what was kept back", shows));
        notifications.closeAll();
        EXPECT_TRUE(notifications.showsANotification());
    }
};

TEST_P(Notifications, NoneAppearsWhilePresenting) {
    NotificationServer notifications(server, *GetParam());
    auto tavro = launch();
    EXPECT_TRUE(notifications.showsANotification());
    for (const bool isUsersOwn : {false, true}) {
        if (isUsersOwn)
            notifications.userSwitchesOn();
        toggle(*tavro);
        EXPECT_TRUE(becomes(notifications, true));
        EXPECT_EQ(tavro->linesOfOutput("isEnabled true"),
                  isUsersOwn ? 2 : 0); // the first turn-off had it, too
        turnOff(*tavro, notifications);
    }
    quit(tavro);
    EXPECT_EQ(tavro->errors(), "");
    EXPECT_EQ(tavro->linesOfOutput("ENABLE"), 2);
    EXPECT_EQ(tavro->linesOfOutput("DISABLE"), 2);
}

TEST_P(Notifications, AppearAgainHoweverTheProgramEnds) {
    NotificationServer notifications(server, *GetParam());
    for (const bool waits : {true, false}) {
        SCOPED_TRACE(waits ? "while presenting" : "at once");
        auto tavro = launch();
        toggle(*tavro);
        EXPECT_TRUE(!waits || becomes(notifications, true));
        quit(tavro);
        EXPECT_FALSE(notifications.isOn());
        EXPECT_TRUE(defaultsHold("DNDfromTavro", false));
    }
    auto tavro = launch();
    toggle(*tavro);
    EXPECT_TRUE(becomes(notifications, true));
    tavro->signal(SIGKILL);
    EXPECT_EQ(tavro->end(), "killed by signal 9");
    tavro = launch();
    EXPECT_TRUE(becomes(notifications, false));
    notifications.closeAll();
    EXPECT_TRUE(notifications.showsANotification());
    quit(tavro);
}

INSTANTIATE_TEST_SUITE_P(Servers, Notifications,
                         testing::Values(&NotificationServer::xfce, &NotificationServer::dunst,
                                         &NotificationServer::mate),
                         [](const auto& info) {
                             std::string name = info.param->name;
                             std::erase_if(name, [](char letter) { return !std::isalnum(letter); });
                             return name;
                         });

// Each wait in vain is a line.
TEST_F(DesktopTest, AHungNotificationServerIsWaitedForOnceAndSwitchedWhenItRecovers) {
    NotificationServer notifications(server, NotificationServer::dunst);
    auto tavro = launch();
    toggle(*tavro);
    toggle(*tavro);
    notifications.freeze();
    toggle(*tavro);
    EXPECT_TRUE(server.eventually("the other applications hidden",
                                  [this] { return areMinimised(windowsBesides("Chat")); }));
    toggle(*tavro);
    toggle(*tavro);
    EXPECT_TRUE(server.eventually("one line", [&] {
        return tavro->errors() ==
               "tavropro: Do Not Disturb cannot be switched: org.freedesktop.Notifications does not answer\n";
    })) << tavro->errors();
    notifications.thaw();
    EXPECT_TRUE(server.eventually("Do Not Disturb on", [&] { return notifications.isOn(); }));
    EXPECT_TRUE(notifications.keepsANotificationBack());
    toggle(*tavro);
    EXPECT_TRUE(server.eventually("Do Not Disturb off", [&] { return !notifications.isOn(); }));
    quit(tavro);
    EXPECT_EQ(lines(tavro->errors()), 1) << tavro->errors();
    notifications.closeAll();
}
