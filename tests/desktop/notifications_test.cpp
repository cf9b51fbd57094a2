#include "support/DesktopTest.h"
#include "support/NotificationServer.h"

#include <chrono>
#include <csignal>

namespace {

using Kind = NotificationServer::Kind;

} // namespace

class Notifications : public DesktopTest, public testing::WithParamInterface<const Kind*> {
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
    /// Closes what a server shows that it had kept back, as some do.
    void closeLateOnes(NotificationServer& notifications) {
        const auto shows = [&] { return notifications.showsAny(); };
        EXPECT_TRUE(GetParam() != &NotificationServer::dunst ||
                    server.eventually("what was kept back", shows));
        notifications.closeAll();
    }
};

TEST_P(Notifications, NoneAppearsWhilePresenting) {
    NotificationServer notifications(server, *GetParam());
    auto tavro = launch();
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(notifications.showsANotification());
        toggle(*tavro);
        EXPECT_TRUE(becomes(notifications, true));
        EXPECT_FALSE(notifications.showsANotification());
        toggle(*tavro);
        EXPECT_TRUE(becomes(notifications, false));
        closeLateOnes(notifications);
    }
    EXPECT_TRUE(notifications.showsANotification());
    quit(tavro);
    EXPECT_EQ(tavro->errors(), "");
    EXPECT_EQ(tavro->linesOfOutput("ENABLE"), 2);
    EXPECT_EQ(tavro->linesOfOutput("DISABLE"), 2);
}

TEST_P(Notifications, WhatTheUserHadSwitchedOnEndsWithThePresentation) {
    NotificationServer notifications(server, *GetParam());
    auto tavro = launch();
    notifications.userSwitchesOn();
    toggle(*tavro);
    EXPECT_EQ(tavro->linesOfOutput("isEnabled true"), 1);
    EXPECT_FALSE(notifications.showsANotification());
    toggle(*tavro);
    EXPECT_TRUE(becomes(notifications, false));
    closeLateOnes(notifications);
    EXPECT_TRUE(notifications.showsANotification());
    quit(tavro);
    EXPECT_EQ(tavro->errors(), "");
}

TEST_P(Notifications, TheNextLaunchsTurnOffPutsRightWhatAKilledProcessHadLeft) {
    NotificationServer notifications(server, *GetParam());
    auto tavro = launch();
    toggle(*tavro);
    EXPECT_TRUE(becomes(notifications, true));
    tavro->signal(SIGKILL);
    EXPECT_EQ(tavro->end(), "killed by signal 9");
    EXPECT_TRUE(notifications.isOn());
    tavro = launch();
    toggle(*tavro);
    EXPECT_EQ(tavro->linesOfOutput("DNDfromTavro true"), 1);
    EXPECT_FALSE(notifications.showsANotification());
    toggle(*tavro);
    EXPECT_TRUE(becomes(notifications, false));
    closeLateOnes(notifications);
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

class HungServer : public DesktopTest {
protected:
    /// Turns on or off, and how long the step before that line took.
    void toggleWithin(TavroProcess& tavro, const char* line, long count, std::chrono::milliseconds bound) {
        const char* first = std::string(line) == "ENABLE" ? turnedOn : turnedOff;
        clickItem(Input::Button::middle);
        ASSERT_TRUE(tavro.waitForLine(first, count));
        const auto start = std::chrono::steady_clock::now();
        ASSERT_TRUE(tavro.waitForLine(line, count));
        EXPECT_LT(std::chrono::steady_clock::now() - start, bound);
        parkPointer();
        waitForTray(std::string(line) == "ENABLE");
    }

    static constexpr std::chrono::milliseconds oneBound{1000}, noBound{250};
};

TEST_F(HungServer, CostsOneBoundAndOneLineAndIsSwitchedWhenItComesToIt) {
    NotificationServer notifications(server, NotificationServer::dunst);
    auto tavro = launch();
    toggle(*tavro);
    toggle(*tavro);
    notifications.freeze();
    toggleWithin(*tavro, "ENABLE", 2, oneBound);
    EXPECT_TRUE(server.eventually("the other applications hidden",
                                  [this] { return areMinimised(windowsBesides("Chat")); }));
    toggleWithin(*tavro, "DISABLE", 2, noBound);
    toggleWithin(*tavro, "ENABLE", 3, noBound);
    EXPECT_EQ(tavro->errors(),
              "tavropro: Do Not Disturb cannot be switched: org.freedesktop.Notifications does "
              "not answer\n");
    notifications.thaw();
    EXPECT_TRUE(server.eventually("Do Not Disturb on", [&] { return notifications.isOn(); }));
    EXPECT_FALSE(notifications.showsANotification());
    toggle(*tavro);
    EXPECT_TRUE(server.eventually("Do Not Disturb off", [&] { return !notifications.isOn(); }));
    quit(tavro);
    EXPECT_EQ(lines(tavro->errors()), 1) << tavro->errors();
    notifications.closeAll();
}

TEST_F(HungServer, OneThatHasNeverAnsweredCostsOneBoundAndOneLineToo) {
    NotificationServer notifications(server, NotificationServer::xfce);
    notifications.freeze();
    auto tavro = launch();
    toggleWithin(*tavro, "ENABLE", 1, oneBound);
    toggleWithin(*tavro, "DISABLE", 1, noBound);
    EXPECT_EQ(lines(tavro->errors()), 1) << tavro->errors();
    notifications.thaw();
    EXPECT_TRUE(notifications.showsANotification()); // and so has answered the program as well
    toggle(*tavro);
    EXPECT_TRUE(server.eventually("Do Not Disturb on", [&] { return notifications.isOn(); }));
    toggle(*tavro);
    EXPECT_TRUE(server.eventually("Do Not Disturb off", [&] { return !notifications.isOn(); }));
    quit(tavro);
}
