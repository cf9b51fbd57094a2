// The switches of notification servers, against stand-ins that answer as the servers are documented to.
#include "platform/linux/notifications/DesktopSilencing.h"
#include "platform/simulated/process/SimulatedLog.h"

#include "support/Files.h"
#include "support/TemporaryFolder.h"
#include "support/servers/BusStandIn.h"
#include "support/servers/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

const QString notifications = "org.freedesktop.Notifications";
const QString properties = "org.freedesktop.DBus.Properties";

struct NotificationServer : BusStandIn {
    NotificationServer(const char* name, const char* vendor, const QStringList& services = {})
        : BusStandIn(services + QStringList{notifications}) {
        QVariantList answer{name, vendor, "1", "1.2"};
        methods[notifications + ".GetServerInformation"] = [=](auto&) { return answer; };
    }
};

class Silencing : public testing::Test {
protected:
    static void SetUpTestSuite() { providePrivateBus(); }

    /// Switches on, off, and off what the user has switched on.
    void expectToSwitch(const std::function<QVariant()>& state, const QVariant& off = false,
                        const QVariant& on = true) {
        EXPECT_EQ(silencing.isOn(), false);
        for (const bool isOn : {true, true, false, false}) {
            EXPECT_TRUE(silencing.setOn(isOn));
            EXPECT_TRUE(state() == (isOn ? on : off)) << isOn;
            EXPECT_EQ(silencing.isOn(), isOn);
        }
        EXPECT_EQ(log.takeDiagnosed(), Lines{});
    }
    void expectToFail(const std::string& why) {
        for (int repeat = 0; repeat < 2; ++repeat) {
            EXPECT_EQ(silencing.isOn(), std::nullopt);
            EXPECT_FALSE(silencing.setOn(true));
        }
        EXPECT_EQ(log.takeDiagnosed(), Lines{"Do Not Disturb cannot be switched: " + why});
    }
    static bool eventually(const std::function<bool()>& condition) {
        return QTest::qWaitFor(condition, 30'000);
    }

    int count = 0;
    QCoreApplication application{count, nullptr};
    Journal journal;
    SimulatedLog log{journal};
    // Nothing that answers comes near these bounds, on however busy a machine.
    BoundedBus bus{QDBusConnection::sessionBus(), 30s};
    const GSettings settings{30s};
    bool bubblesAreAway = false;
    DesktopSilencing silencing{bus, settings, log, [this](bool areAway) { bubblesAreAway = areAway; }};
};

// One object for all: who owns the name next is another server.
TEST_F(Silencing, SwitchesTheServerThatRuns) {
    const std::tuple<const char*, const char*, QString, QString, QVariant, QVariant> onTheBus[] = {
        {"Xfce Notify Daemon", "org.xfce.Xfconf", "org.xfce.Xfconf.GetProperty xfce4-notifyd /do-not-disturb",
         "org.xfce.Xfconf.SetProperty xfce4-notifyd /do-not-disturb", busVariant(false), busVariant(true)},
        {"dunst", "", properties + ".Get org.dunstproject.cmd0 paused",
         properties + ".Set org.dunstproject.cmd0 paused", busVariant(false), busVariant(true)},
        {"mako", "fr.emersion.Mako", "fr.emersion.Mako.ListModes", "fr.emersion.Mako.SetModes",
         QStringList{"default", "away"}, QStringList{"default", "away", "do-not-disturb"}},
        {"SwayNotificationCenter", "org.erikreider.swaync.cc", "org.erikreider.swaync.cc.GetDnd",
         "org.erikreider.swaync.cc.SetDnd", false, true},
    };
    for (const auto& [name, service, get, set, off, on] : onTheBus) {
        SCOPED_TRACE(name);
        auto state = off;
        NotificationServer server(name, "", QString(service).split(' ', Qt::SkipEmptyParts));
        server.methods[get] = [&state](auto&) { return QVariantList{state}; };
        server.methods[set] = [&state](const auto& message) {
            state = message.arguments().last();
            return QVariantList();
        };
        expectToSwitch([&state] { return state; }, off, on);
    }
    const TemporaryFolder configuration;
    qputenv("GSETTINGS_BACKEND", "keyfile");
    qputenv("XDG_CONFIG_HOME", configuration.path().c_str());
    for (const auto& [name, vendor, setting, valueWhenOn] :
         {std::tuple("gnome-shell", "GNOME", "org.gnome.desktop.notifications show-banners", false),
          {"cinnamon", "GNOME", "org.cinnamon.desktop.notifications display-notifications", false},
          {"Notification Daemon", "MATE", "org.mate.NotificationDaemon do-not-disturb", true}}) {
        SCOPED_TRACE(name);
        const NotificationServer server(name, vendor);
        const auto command = std::string("test $(gsettings get ") + setting + ") = true";
        expectToSwitch([&] { return std::system(command.c_str()) == 0; }, !valueWhenOn, valueWhenOn);
    }
    const auto file = configuration.path() / "lxqt/notifications.conf";
    std::filesystem::create_directory(file.parent_path());
    write(file, "[General]\n__userfile__=true\nspacing=6\n");
    const NotificationServer lxqt("lxqt-notificationd", "lxqt.org");
    expectToSwitch([&] { return contentsOf(file).find("doNotDisturb=true") != std::string::npos; });
    EXPECT_NE(contentsOf(file).find("spacing=6"), std::string::npos);
}

TEST_F(Silencing, KeepsTheBubblesOfServersWithoutASwitchAway) {
    for (const auto& [name, vendor] : {std::pair("Harbour", ""), {"Notification Daemon", "GNOME"}}) {
        const NotificationServer other(name, vendor);
        expectToSwitch([&] { return bubblesAreAway; });
    }
}

TEST_F(Silencing, MissingOrBrokenServersAreReportedOnce) {
    expectToFail("no notification server is running");
    NotificationServer dunst("dunst", "knopwob");
    for (const auto& answer : {QVariantList{busVariant("maybe")}, QVariantList{}}) {
        dunst.methods[properties + ".Get org.dunstproject.cmd0 paused"] = [=](auto&) { return answer; };
        EXPECT_EQ(silencing.isOn(), std::nullopt);
    }
    EXPECT_EQ(log.takeDiagnosed().size(), 1u);
    EXPECT_FALSE(silencing.setOn(true)); // a method that is not there
    EXPECT_THAT(log.takeDiagnosed(), testing::ElementsAre(testing::HasSubstr(": There is no\norg.")));
}

struct Plasma : NotificationServer {
    Plasma()
        : NotificationServer("Plasma", "KDE") {
        methods[properties + ".Get " + notifications + " Inhibited"] = [this](auto&) {
            std::erase_if(inhibitions, [](const auto& entry) { // their connections have gone
                return !QDBusConnection("stand-in").interface()->isServiceRegistered(entry.second);
            });
            return QVariantList{busVariant(isOnByUser || !inhibitions.empty())};
        };
        methods[notifications + ".Inhibit com.vantrelo.TavroPRO Presentation mode"] =
            [this](const auto& message) {
                const auto cookie = static_cast<unsigned>(inhibitions.size()) + 1;
                inhibitions[cookie] = message.service();
                return QVariantList{cookie};
            };
        methods[unInhibit] = [this](const auto& message) {
            inhibitions.erase(message.arguments().value(0).toUInt());
            return QVariantList();
        };
    }

    const QString unInhibit = notifications + ".UnInhibit";
    std::atomic<bool> isOnByUser = false;
    std::map<unsigned, QString> inhibitions; // the connection that asked for it
};

TEST_F(Silencing, PlasmaIsInhibitedOnceAndUntilTheConnectionEnds) {
    Plasma plasma;
    expectToSwitch([&] { return plasma.inhibitions.size() == 1; });
    plasma.methods.erase(plasma.unInhibit); // as when nobody is left to call it
    EXPECT_TRUE(DesktopSilencing(bus, settings, log, nullptr).setOn(true));
    EXPECT_TRUE(eventually([&] { return silencing.isOn() == false; }));
    plasma.isOnByUser = true; // which is the user's to end
    for (int repeat = 0; repeat < 2; ++repeat)
        EXPECT_FALSE(silencing.setOn(false));
    EXPECT_EQ(log.takeDiagnosed().size(), 1u);
    plasma.isOnByUser = false;
    EXPECT_TRUE(silencing.setOn(false));
}

TEST_F(Silencing, AHungServerIsAwaitedOnceAndKeepsNoInhibition) {
    BoundedBus impatient(QDBusConnection::sessionBus(), 1500ms);
    DesktopSilencing silencing(impatient, settings, log, nullptr);
    Plasma plasma;
    for (const bool isOn : {false, true}) {
        SCOPED_TRACE(isOn);
        EXPECT_TRUE(eventually([&] { return silencing.setOn(isOn); }));
        log.takeDiagnosed();
        plasma.setSilent(true);
        constexpr int repeats = 40;
        const auto start = std::chrono::steady_clock::now();
        for (int repeat = 0; repeat < repeats; ++repeat)
            EXPECT_EQ(silencing.isOn(), std::nullopt);
        EXPECT_FALSE(silencing.setOn(!isOn));
        EXPECT_LT(std::chrono::steady_clock::now() - start, repeats / 2 * impatient.bound());
        EXPECT_EQ(log.takeDiagnosed().size(), 1u);
        plasma.setSilent(false);
        EXPECT_TRUE(eventually([&] { return silencing.isOn() == false; }));
    }
}

} // namespace
} // namespace tavro
