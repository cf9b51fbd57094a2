// The switches for notification servers that run only with a whole desktop of their kind or on Wayland,
// against stand-ins that implement the documented interfaces.
#include "support/Session.h"
#include "support/TemporaryFolder.h"

#include "platform/linux/notifications/DesktopSilencing.h"
#include "platform/simulated/process/SimulatedLog.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QThread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <map>

using namespace tavro;
using namespace std::chrono_literals;

namespace {

/// A notification server on a thread and a connection of its own. What it says of itself, and what it does
/// for each method, is the test's to choose.
class StandIn final : public QDBusVirtualObject {
public:
    using Method = std::function<QVariantList(const QDBusMessage&)>;

    StandIn(const QString& name, const QString& vendor, const QString& otherService = {}) {
        methods["GetServerInformation"] = [=](auto&) { return QVariantList{name, vendor, "1", "1.2"}; };
        methods["Ping"] = [](auto&) { return QVariantList{}; };
        moveToThread(&m_thread);
        m_thread.start();
        QMetaObject::invokeMethod(
            this,
            [&] {
                auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "stand-in");
                bus.registerVirtualObject("/", this, QDBusConnection::SubPath);
                EXPECT_TRUE(bus.registerService("org.freedesktop.Notifications"));
                EXPECT_TRUE(otherService.isEmpty() || bus.registerService(otherService));
                m_watcher = std::make_unique<QDBusServiceWatcher>();
                m_watcher->setConnection(bus);
                m_watcher->setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
                connect(m_watcher.get(), &QDBusServiceWatcher::serviceUnregistered, this,
                        [this](const QString& client) { clientGone(client); });
            },
            Qt::BlockingQueuedConnection);
    }
    ~StandIn() override {
        QMetaObject::invokeMethod(
            this,
            [this] {
                m_watcher.reset();
                QDBusConnection::disconnectFromBus("stand-in");
                moveToThread(nullptr);
            },
            Qt::BlockingQueuedConnection);
        m_thread.quit();
        m_thread.wait();
    }

    /// The name of the method, for a property with its own name after it: "Get paused".
    std::map<QString, Method> methods;
    std::function<void(const QString&)> clientGone = [](auto&) {};
    void setSilent(bool isSilent) {
        m_isSilent = isSilent;
        m_isSilent.notify_all();
    }

    void watch(const QString& client) { m_watcher->addWatchedService(client); }

private:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        auto name = message.member();
        if (message.interface() == "org.freedesktop.DBus.Properties")
            name += ' ' + message.arguments().value(1).toString();
        m_isSilent.wait(true); // as a stopped process: later, but in the end
        const auto method = methods.find(name);
        connection.send(method == methods.end()
                            ? message.createErrorReply(QDBusError::UnknownMethod, "There is no\n" + name)
                            : message.createReply(method->second(message)));
        return true;
    }

    std::atomic<bool> m_isSilent = false;
    QThread m_thread;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
};

bool eventually(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + 10s;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

class Silencing : public testing::Test {
protected:
    Journal journal;
    SimulatedLog log{journal};
    BoundedBus bus;
    const GSettings settings;
    DesktopSilencing silencing{bus, settings, log};
};

std::chrono::steady_clock::duration time(const std::function<void()>& call) {
    const auto start = std::chrono::steady_clock::now();
    call();
    return std::chrono::steady_clock::now() - start;
}

QVariant variant(const QVariant& value) {
    return QVariant::fromValue(QDBusVariant(value));
}

} // namespace

/// Switches on, off, and off what the user has switched on.
#define EXPECT_SWITCHES(state)                                                                               \
    {                                                                                                        \
        EXPECT_EQ(silencing.isOn(), false);                                                                  \
        for (int repeat = 0; repeat < 2; ++repeat) {                                                         \
            EXPECT_TRUE(silencing.setOn(true));                                                              \
            EXPECT_TRUE(state);                                                                              \
            EXPECT_EQ(silencing.isOn(), true);                                                               \
        }                                                                                                    \
        for (int repeat = 0; repeat < 2; ++repeat) {                                                         \
            EXPECT_TRUE(silencing.setOn(false));                                                             \
            EXPECT_FALSE(state);                                                                             \
            EXPECT_EQ(silencing.isOn(), false);                                                              \
        }                                                                                                    \
        EXPECT_EQ(log.takeDiagnosed(), std::vector<std::string>{});                                          \
    }

TEST_F(Silencing, Mako) {
    StandIn mako("mako", "emersion", "fr.emersion.Mako");
    QStringList modes{"default", "away"};
    mako.methods["ListModes"] = [&](auto&) { return QVariantList{modes}; };
    mako.methods["SetModes"] = [&](const auto& message) {
        modes = message.arguments().value(0).toStringList();
        return QVariantList{};
    };
    EXPECT_SWITCHES(modes.contains("do-not-disturb"));
    EXPECT_EQ(modes, (QStringList{"default", "away"}));
}

class Sway : public Silencing {
protected:
    Sway() {
        swaync.methods["GetDnd"] = [this](auto&) { return QVariantList{isOn}; };
        swaync.methods["SetDnd"] = [this](const auto& message) {
            isOn = message.arguments().value(0).toBool();
            return QVariantList{};
        };
    }

    bool isOn = false;
    StandIn swaync{"SwayNotificationCenter", "ErikReider", "org.erikreider.swaync.cc"};
};

TEST_F(Sway, IsSwitched) {
    EXPECT_SWITCHES(isOn);
}

TEST_F(Silencing, GnomeShell) {
    const TemporaryFolder settings;
    qputenv("GSETTINGS_BACKEND", "keyfile");
    qputenv("XDG_CONFIG_HOME", settings.path().c_str());
    StandIn gnome("gnome-shell", "GNOME");
    const auto showsBanners = [] {
        return Session::run("test $(gsettings get org.gnome.desktop.notifications show-banners) = true");
    };
    EXPECT_SWITCHES(!showsBanners());
}

class Plasma : public Silencing {
protected:
    Plasma() {
        plasma.methods["Get Inhibited"] = [this](auto&) {
            return QVariantList{variant(isOnByUser || !inhibitions.empty())};
        };
        plasma.methods["Inhibit"] = [this](const auto& message) {
            plasma.watch(message.service());
            inhibitions[++last] = message.service();
            return QVariantList{last};
        };
        plasma.methods["UnInhibit"] = [this](const auto& message) {
            inhibitions.erase(message.arguments().value(0).toUInt());
            return QVariantList{};
        };
        plasma.clientGone = [this](const QString& client) {
            std::erase_if(inhibitions, [&](const auto& entry) { return entry.second == client; });
        };
    }

    std::atomic<bool> isOnByUser = false;
    unsigned last = 0;
    std::map<unsigned, QString> inhibitions; // the connection that asked for it
    StandIn plasma{"Plasma", "KDE"};
};

TEST_F(Plasma, AnInhibitionIsHeldOnceAndGivenBack) {
    EXPECT_SWITCHES(inhibitions.size() == 1);
    EXPECT_EQ(last, 1u);
}

TEST_F(Plasma, AnInhibitionEndsWithTheConnectionThatAskedForIt) {
    auto dying = std::make_unique<DesktopSilencing>(bus, settings, log);
    EXPECT_TRUE(dying->setOn(true));
    plasma.methods.erase("UnInhibit"); // as when nobody is left to call it
    dying.reset();
    EXPECT_TRUE(eventually([&] { return silencing.isOn() == false; }));
    EXPECT_EQ(log.takeDiagnosed(), std::vector<std::string>{});
}

TEST_F(Plasma, WhatTheUserHasSwitchedOnIsTheUsersToEnd) {
    isOnByUser = true;
    EXPECT_EQ(silencing.isOn(), true);
    EXPECT_FALSE(silencing.setOn(false));
    EXPECT_FALSE(silencing.setOn(false));
    EXPECT_EQ(log.takeDiagnosed().size(), 1u);
    isOnByUser = false;
    EXPECT_TRUE(silencing.setOn(false));
}

TEST_F(Plasma, AHungServerCostsOneBoundAndKeepsNoInhibition) {
    for (const bool isOn : {false, true}) {
        SCOPED_TRACE(isOn);
        EXPECT_TRUE(silencing.setOn(isOn));
        plasma.setSilent(true);
        EXPECT_LT(time([&] { EXPECT_EQ(silencing.isOn(), std::nullopt); }), 1000ms);
        EXPECT_LT(time([&] { EXPECT_FALSE(silencing.setOn(!isOn)); }), 250ms);
        EXPECT_EQ(log.takeDiagnosed().size(), 1u);
        plasma.setSilent(false);
        EXPECT_TRUE(eventually([&] { return silencing.isOn() == false; }));
        log.takeDiagnosed();
    }
}

TEST_F(Silencing, WithoutAServerOrASwitchOneLineSaysSo) {
    const auto fails = [this](const std::string& why) {
        for (int repeat = 0; repeat < 2; ++repeat) {
            EXPECT_EQ(silencing.isOn(), std::nullopt);
            EXPECT_FALSE(silencing.setOn(true));
        }
        EXPECT_EQ(log.takeDiagnosed(), std::vector{"Do Not Disturb cannot be switched: " + why});
    };
    fails("no notification server is running");
    {
        StandIn unknown("Harbour\nServer", "", "");
        fails("the notification server \"Harbour Server\" has no switch that is known here");
    }
    {
        StandIn other("Notification Daemon", "GNOME");
        fails("the notification server \"Notification Daemon\" has no switch that is known here");
    }
    {
        StandIn dunst("dunst", "knopwob");
        dunst.methods["Get paused"] = [](auto&) { return QVariantList{variant("maybe")}; };
        EXPECT_EQ(silencing.isOn(), std::nullopt);
        dunst.methods["Get paused"] = [](auto&) { return QVariantList{}; };
        EXPECT_EQ(silencing.isOn(), std::nullopt);
        EXPECT_EQ(log.takeDiagnosed().size(), 1u);
        EXPECT_FALSE(silencing.setOn(true)); // a method that is not there
        EXPECT_THAT(log.takeDiagnosed(), testing::ElementsAre(testing::EndsWith("There is no Set paused")));
    }
    fails("no notification server is running");
}

TEST_F(Sway, AServerThatDoesNotAnswerIsWaitedForOnce) {
    for (const bool hasEverAnswered : {false, true}) {
        SCOPED_TRACE(hasEverAnswered);
        swaync.setSilent(true);
        EXPECT_LT(time([&] { EXPECT_EQ(silencing.isOn(), std::nullopt); }), 1000ms);
        EXPECT_LT(time([&] { EXPECT_FALSE(silencing.setOn(true)); }), 250ms);
        EXPECT_EQ(log.takeDiagnosed().size(), 1u);
        swaync.setSilent(false);
        // What a server that is known was asked for is not lost.
        EXPECT_TRUE(eventually([&] { return silencing.isOn() == hasEverAnswered; }));
        EXPECT_TRUE(silencing.setOn(false));
        EXPECT_EQ(silencing.isOn(), false);
        EXPECT_EQ(log.takeDiagnosed().size(), 0u);
    }
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QCoreApplication application(argc, argv);
    if (!Session::isPrivate())
        return EXIT_FAILURE;
    return RUN_ALL_TESTS();
}
