#include "support/AudioServer.h"
#include "support/DesktopTest.h"

#include <algorithm>
#include <csignal>

/// Something happens in the middle of turning presentation mode on or off: at the next turn-off, or launch,
/// everything is as it was. Control-Super-P switches the mode.
class Interrupted : public DesktopTest {
protected:
    void SetUp() override {
        DesktopTest::SetUp();
        writeDefaults(R"(<key>KeyboardShortcuts_tavroGlobalShortcut</key>
            <string>{"carbonKeyCode":35,"carbonModifiers":4352}</string><key>muteSpeaker</key><true/>)");
        others = windowsBesides("Chat");
        chat = server.active();
    }

    void pressShortcut() { input.type({Input::Key::control, Input::Key::super}, Input::Key::p); }
    bool isOn() { return tavro->linesOfOutput(turnedOn) > tavro->linesOfOutput(turnedOff); }

    /// Kills a piece of the session and starts it anew.
    void replace(const std::string& piece) const {
        Session::signal(piece, SIGKILL);
        EXPECT_TRUE(waitForEnd(Session::pid(piece)));
        Session::start(piece);
    }
    void unplugAndPlugScreen() {
        EXPECT_TRUE(Session::run("xrandr --output DUMMY1 --off"));
        EXPECT_TRUE(server.eventually("one screen", [this] { return server.screens().size() == 1; }));
        EXPECT_TRUE(Session::run("xrandr --output DUMMY1 --mode 1440x900 --right-of DUMMY0"));
        EXPECT_TRUE(server.eventually("two screens", [this] { return server.screens().size() == 2; }));
    }
    void killAndRelaunch() {
        tavro->signal(SIGKILL);
        EXPECT_EQ(tavro->end(), "killed by signal 9");
        tavro = std::make_unique<TavroProcess>(settings());
        EXPECT_TRUE(showsPopover(*tavro));
        input.type(Input::Key::escape);
    }

    static bool hasHost() {
        return Session::run("gdbus call --session --dest org.kde.StatusNotifierWatcher --object-path "
                            "/StatusNotifierWatcher --method org.freedesktop.DBus.Properties.Get "
                            "org.kde.StatusNotifierWatcher IsStatusNotifierHostRegistered 2>/dev/null | "
                            "grep -q true");
    }

    /// A switch that is under way is over when the last thing that it does shows.
    void turnOff() {
        waitForTray(isOn());
        if (isOn())
            pressShortcut();
        waitForTray(false);
    }
    bool isQuiet() const {
        return Session::run("test \"$(xfconf-query -c xfce4-notifyd -p /do-not-disturb)\" = true");
    }
    void expectEverythingAsItWas() {
        EXPECT_TRUE(server.eventually("all windows without a mark", [this] {
            return std::ranges::none_of(server.applicationWindows(), [this](auto window) {
                return server.isMinimised(window) || isMarked(window);
            });
        }));
        EXPECT_TRUE(server.eventually("no cover", [this] { return covers(*tavro).empty(); }));
        EXPECT_TRUE(server.eventually("the end of the silence", [this] { return !isQuiet(); }));
        EXPECT_TRUE(server.eventually("sound", [] { return !AudioServer::isMuted("speaker_1"); }));
        EXPECT_TRUE(server.grabKeyboard()) << "a grab is left";
        server.ungrabKeyboard();
        EXPECT_FALSE(Session::run("pgrep -P " + std::to_string(tavro->pid()))) << "a helper is left";
        EXPECT_TRUE(defaults().ends_with("</plist>\n")) << "settings half written: " << defaults();
    }

    AudioServer audio;
    std::unique_ptr<TavroProcess> tavro;
    std::vector<xcb_window_t> others;
    xcb_window_t chat = XCB_NONE;
};

TEST_F(Interrupted, SwitchesAreMadeGoodWhateverHappensInTheirMiddle) {
    const auto line = [this](const char* text) { return tavro->linesOfOutput(text) > 0; };
    const struct {
        const char* what;
        bool turnsOn;
        std::function<bool()> isReached;
    } steps[] = {
        {"on begins", true, [&] { return line(turnedOn); }},
        {"silence is asked for", true, [&] { return line("ENABLE"); }},
        {"a window is hidden", true, [&] { return server.isMinimised(others.front()); }},
        {"silence is answered", true, [&] { return line("DNDfromTavro false"); }},
        {"on is over", true, [&] { return tray.showsItemAndButton(); }},
        {"off begins", false, [&] { return line(turnedOff); }},
        {"the end of silence is asked for", false, [&] { return line("DISABLE"); }},
        {"a window is back", false, [&] { return !server.isMinimised(others.front()); }},
        {"off is over", false, [&] { return tray.showsItem(); }},
    };
    const std::pair<const char*, std::function<void(ClientApplication&, xcb_window_t)>> faults[] = {
        {"we are killed", [&](auto&, auto) { killAndRelaunch(); }},
        {"the panel is killed",
         [&](auto&, auto) {
             replace("panel");
             EXPECT_TRUE(server.eventually("the item in the next panel", [&] { return hasHost(); }));
         }},
        {"the notification server is killed", [&](auto&, auto) { replace("notifyd"); }},
        {"the settings daemon is killed", [&](auto&, auto) { replace("xfconfd"); }},
        {"the sound server ends",
         [&](auto&, auto) {
             audio.end();
             audio.start();
         }},
        {"a window goes", [](auto& client, auto window) { client.destroy(window); }},
        {"a device comes and goes",
         [&](auto&, auto) {
             audio.plugInMicrophone("mic_3");
             audio.unplug("mic_3");
         }},
        {"a screen goes and comes", [&](auto&, auto) { unplugAndPlugScreen(); }},
    };
    for (const auto& [fault, strike] : faults)
        for (const auto& [step, turnsOn, isReached] : steps) {
            SCOPED_TRACE(std::string(fault) + ", when " + step);
            ClientApplication client(server, "Alpha");
            const auto window = client.addWindow({300, 200, 300, 200});
            server.activate(chat);
            ASSERT_TRUE(server.eventually("the chat in front", [&] { return server.active() == chat; }));
            tavro = launch();
            if (!turnsOn) {
                pressShortcut();
                waitForTray(true);
            }
            pressShortcut();
            EXPECT_TRUE(::eventually(step, isReached, [] { ::usleep(500); }));
            strike(client, window);
            turnOff();
            expectEverythingAsItWas();
            quit(tavro);
        }
}
