#include "support/desktop/DesktopTest.h"
#include "support/servers/AudioServer.h"

#include <algorithm>
#include <csignal>

class Interrupted;

struct Fault {
    const char* name;
    void (Interrupted::*strike)();
};

/// Something happens in the middle of turning presentation mode on or off: at the next turn-off, or launch,
/// everything is as it was.
class Interrupted : public DesktopTest, public testing::WithParamInterface<Fault> {
public:
    void killAndRelaunch() {
        tavro->signal(SIGKILL);
        EXPECT_EQ(tavro->end(), "killed by signal 9");
        relaunch();
    }
    void replacePanel() {
        kill({"panel"});
        EXPECT_TRUE(server.eventually("the end of its tray", [] { return !hasHost(); }));
        startPanel();
    }
    /// With the bus, the desktop ends; this program lives on until it is asked to end.
    void replaceBus() {
        kill({"bus"});
        kill({"panel", "notifyd", "xfconfd", "xfdesktop", "xfsettingsd", "xfwm4"}, SIGTERM);
        start({"bus"});
        EXPECT_TRUE(server.eventually("the next bus", [] { return hasBus(); }));
        start({"xfconfd", "xfsettingsd", "xfwm4", "xfdesktop", "notifyd"});
        startPanel();
        tavro->signal(SIGTERM);
        EXPECT_EQ(tavro->end(), "exited with 0");
        relaunch();
    }
    /// And stay so while presentation mode is switched once more.
    void stopPeers() {
        const auto peers = {"panel", "bus", "notifyd", "sound", "xfconfd"};
        for (const auto* peer : peers)
            Session::signal(peer, SIGSTOP);
        const bool isNowOn = isOn();
        EXPECT_TRUE(soonLooks(isNowOn));
        pressShortcut();
        EXPECT_TRUE(soonLooks(!isNowOn));
        for (const auto* peer : peers)
            Session::signal(peer, SIGCONT);
        waitForTray(!isNowOn);
        EXPECT_TRUE(server.eventually("what they were asked for", [&] {
            return isQuiet() != isNowOn && AudioServer::isMuted("speaker_1") != isNowOn;
        }));
        EXPECT_LE(lines(tavro->errors()), 2) << tavro->errors();
    }
    void replaceNotificationServer() { kill({"notifyd"}), start({"notifyd"}); }
    /// It saves what it has answered; what a daemon loses that has no time for that is nobody else's to keep.
    void replaceSettingsDaemon() { kill({"xfconfd"}, SIGTERM), start({"xfconfd"}); }
    void replaceWindowManager() { kill({"xfwm4"}), start({"xfwm4"}); }
    void replaceSoundServer() {
        audio.end();
        audio.start();
    }
    void destroyWindow() { client->destroy(window); }
    void plugAndUnplugDevice() {
        audio.plugInMicrophone("mic_3");
        audio.unplug("mic_3");
    }
    void unplugAndPlugScreen() {
        EXPECT_TRUE(Session::run("xrandr --output DUMMY1 --off"));
        EXPECT_TRUE(server.eventually("one screen", [this] { return server.screens().size() == 1; }));
        EXPECT_TRUE(Session::run("xrandr --output DUMMY1 --mode 1440x900 --right-of DUMMY0"));
        EXPECT_TRUE(server.eventually("two screens", [this] { return server.screens().size() == 2; }));
    }

protected:
    void SetUp() override {
        DesktopTest::SetUp();
        writeDefaultsWithShortcut("<key>muteSpeaker</key><true/>");
        others = windowsBesides("Chat");
        chat = server.active();
    }

    bool isOn() { return tavro->linesOfOutput(turnedOn) > tavro->linesOfOutput(turnedOff); }
    bool hasLine(const char* line) { return tavro->linesOfOutput(line) > 0; }

    /// Within a time that is far below what the bus waits for an answer, and far above what a busy machine
    /// needs.
    testing::AssertionResult soonLooks(bool on) {
        const auto holds = [this, on] {
            return isOn() == on && (on ? areMinimised(others) && isCovered()
                                       : covers(*tavro).empty() && server.isViewable(others.front()));
        };
        return ::eventually(
            on ? "the others hidden and the icons covered" : "the windows back", holds,
            [this] { server.waitForEvent(std::chrono::milliseconds(5)); }, std::chrono::seconds(10));
    }

    static void kill(const std::vector<std::string>& pieces, int signal = SIGKILL) {
        for (const auto& piece : pieces) {
            Session::signal(piece, signal);
            EXPECT_TRUE(waitForEnd(Session::pid(piece))) << piece;
        }
    }
    static void start(const std::vector<std::string>& pieces) {
        for (const auto& piece : pieces)
            Session::start(piece);
    }
    void startPanel() {
        start({"panel"});
        EXPECT_TRUE(server.eventually("the next panel's tray", [] { return hasHost(); }));
    }
    void relaunch() {
        tavro = std::make_unique<TavroProcess>(settings());
        EXPECT_TRUE(showsPopover(*tavro));
        input.type(Input::Key::escape);
    }
    static bool hasBus() {
        return Session::run(
            "gdbus introspect --session --dest org.freedesktop.DBus --object-path / >/dev/null 2>&1");
    }
    static bool hasHost() {
        return Session::run("gdbus call --session --dest org.kde.StatusNotifierWatcher --object-path "
                            "/StatusNotifierWatcher --method org.freedesktop.DBus.Properties.Get "
                            "org.kde.StatusNotifierWatcher IsStatusNotifierHostRegistered 2>/dev/null | "
                            "grep -q true");
    }
    static bool isQuiet() {
        return Session::run("test \"$(xfconf-query -c xfce4-notifyd -p /do-not-disturb)\" = true");
    }

    /// Presses the shortcut, once or twice, and strikes when the last switch has come to the step.
    void strikeAt(const char* what, bool turnsOn, const std::function<bool()>& isReached) {
        client.emplace(server, "Alpha");
        window = client->addWindow({300, 200, 300, 200});
        server.activate(chat);
        ASSERT_TRUE(server.eventually("the chat in front", [this] { return server.active() == chat; }));
        tavro = launch();
        if (!turnsOn) {
            pressShortcut();
            waitForTray(true);
        }
        pressShortcut();
        EXPECT_TRUE(
            ::eventually(what, isReached, [this] { server.waitForEvent(std::chrono::milliseconds(1)); }))
            << tavro->output() << tavro->errors();
        (this->*GetParam().strike)();
    }
    /// A switch that is under way is over when the last thing that it does shows.
    void turnOff() {
        waitForTray(isOn());
        if (isOn())
            pressShortcut();
        waitForTray(false);
    }
    void expectEverythingAsItWas() {
        EXPECT_TRUE(server.eventually("all windows without a mark", [this] {
            return std::ranges::none_of(server.applicationWindows(), [this](auto each) {
                return server.isMinimised(each) || isMarked(each);
            });
        }));
        EXPECT_TRUE(server.eventually("no cover", [this] { return covers(*tavro).empty(); }));
        EXPECT_TRUE(server.eventually("the end of the silence", [] { return !isQuiet(); }));
        EXPECT_TRUE(server.eventually("sound", [] { return !AudioServer::isMuted("speaker_1"); }));
        EXPECT_TRUE(server.grabKeyboard()) << "a grab is left";
        server.ungrabKeyboard();
        EXPECT_TRUE(server.eventually(
            "no helper", [this] { return !Session::run("pgrep -P " + std::to_string(tavro->pid())); }));
        EXPECT_TRUE(defaults().ends_with("</plist>\n")) << "settings half written: " << defaults();
    }

    AudioServer audio;
    std::unique_ptr<TavroProcess> tavro;
    std::optional<ClientApplication> client; // one of the others, with one window
    xcb_window_t window = XCB_NONE;
    std::vector<xcb_window_t> others;
    xcb_window_t chat = XCB_NONE;
};

INSTANTIATE_TEST_SUITE_P(Interrupted, Interrupted,
                         testing::Values(Fault{"WeAreKilled", &Interrupted::killAndRelaunch},
                                         Fault{"PanelIsKilled", &Interrupted::replacePanel},
                                         Fault{"BusIsKilled", &Interrupted::replaceBus},
                                         Fault{"PeersAreStopped", &Interrupted::stopPeers},
                                         Fault{"NotificationServerIsKilled",
                                               &Interrupted::replaceNotificationServer},
                                         Fault{"SettingsDaemonIsKilled", &Interrupted::replaceSettingsDaemon},
                                         Fault{"WindowManagerIsKilled", &Interrupted::replaceWindowManager},
                                         Fault{"SoundServerEnds", &Interrupted::replaceSoundServer},
                                         Fault{"WindowGoes", &Interrupted::destroyWindow},
                                         Fault{"DeviceComesAndGoes", &Interrupted::plugAndUnplugDevice},
                                         Fault{"ScreenGoesAndComes", &Interrupted::unplugAndPlugScreen}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(Interrupted, TheNextSwitchOrLaunchRestoresEverything) {
    const std::tuple<const char*, bool, std::function<bool()>> steps[] = {
        {"on begins", true, [&] { return hasLine(turnedOn); }},
        {"silence is asked for", true, [&] { return hasLine("ENABLE"); }},
        {"a window is hidden", true, [&] { return server.isMinimised(others.front()); }},
        {"silence is noted", true,
         [&] { return tavro->output().rfind("DNDfromTavro") > tavro->output().find("ENABLE"); }},
        {"on is over", true, [&] { return tray.showsItemAndButton(); }},
        {"off begins", false, [&] { return hasLine(turnedOff); }},
        {"the end of silence is asked for", false, [&] { return hasLine("DISABLE"); }},
        {"a window is back", false, [&] { return !server.isMinimised(others.front()); }},
        {"off is over", false, [&] { return tray.showsItem(); }},
    };
    for (const auto& [what, turnsOn, isReached] : steps) {
        SCOPED_TRACE(std::string("When ") + what);
        strikeAt(what, turnsOn, isReached);
        turnOff();
        expectEverythingAsItWas();
        quit(tavro);
        client.reset();
    }
}
