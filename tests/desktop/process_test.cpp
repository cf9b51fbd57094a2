#include "support/desktop/DesktopTest.h"
#include "support/servers/SessionManager.h"

#include <csignal>

class ProcessTest : public DesktopTest {
protected:
    /// Presentation mode with the other applications hidden.
    void present(TavroProcess& tavro) {
        toggle(tavro);
        EXPECT_TRUE(server.eventually("the other applications hidden",
                                      [this] { return areMinimised(windowsBesides("Chat")); }));
    }

    bool defaultsSayOff() const { return defaultsHold("tavro", false); }

    xcb_window_t onlyMenu() {
        EXPECT_TRUE(server.eventually("one menu", [this] { return server.menus().size() == 1; }));
        const auto all = server.menus();
        return all.empty() ? xcb_window_t{XCB_NONE} : all.front();
    }

    /// The entry is lit when the menu follows the pointer; a click that comes sooner may be lost.
    void chooseLast(const Rect& menu) {
        const Point entry{menu.x + menu.width / 2, menu.y + menu.height - 14};
        const auto unlit = server.screenshot(menu);
        input.moveTo(entry);
        EXPECT_TRUE(server.eventually("the entry lit", [&] { return server.screenshot(menu) != unlit; }));
        input.click(entry, Input::Button::left);
    }

    void openMenu(bool withControl) {
        if (withControl)
            input.press(Input::Key::control);
        clickItem(withControl ? Input::Button::left : Input::Button::right);
        EXPECT_TRUE(server.eventually("the menu", [this] { return !server.menus().empty(); }));
        if (withControl) // a hand holds the key until the menu is there
            input.release(Input::Key::control);
    }
};

TEST_F(ProcessTest, TheMenuOpensAtTheItemAndLeavesTheClicksToTheProgram) {
    auto tavro = launch();
    for (const bool withControl : {false, true}) {
        SCOPED_TRACE(withControl ? "Control-click" : "right click");
        openMenu(withControl);
        const auto menu = server.place(onlyMenu());
        const auto item = tray.itemPlace();
        EXPECT_LE(menu.y, 32) << menu;
        EXPECT_GE(menu.y, item.y) << menu;
        EXPECT_LE(menu.x, item.x) << menu;
        EXPECT_GE(menu.x + menu.width, item.x - 20) << menu;
        EXPECT_TRUE(closeMenu());
        parkPointer();
        EXPECT_EQ(tavro->linesOfOutput(turnedOn), 0) << "the menu's click did something";
        present(*tavro);
        toggle(*tavro);
        EXPECT_EQ(tavro->linesOfOutput(turnedOff), 1);
        quit(tavro);
        tavro = launch();
    }
    quit(tavro);
}

TEST_F(ProcessTest, TheNextLaunchBringsBackWhatAProcessThatQuitOrWasKilledHadHidden) {
    const auto chooseQuit = [this](bool withControl) {
        openMenu(withControl);
        chooseLast(server.place(onlyMenu()));
    };
    const std::tuple<const char*, std::function<void(TavroProcess&)>, const char*> ends[] = {
        {"right click", [&](auto&) { chooseQuit(false); }, "exited with 0"},
        {"Control-click", [&](auto&) { chooseQuit(true); }, "exited with 0"},
        {"killed", [](auto& tavro) { tavro.signal(SIGKILL); }, "killed by signal 9"},
    };
    for (const auto& [what, end, status] : ends) {
        SCOPED_TRACE(what);
        auto tavro = launch();
        present(*tavro);
        ASSERT_TRUE(server.eventually("the mode in the defaults file", [this] { return !defaultsSayOff(); }));
        end(*tavro);
        EXPECT_EQ(tavro->end(), status);
        EXPECT_EQ(tavro->linesOfOutput(turnedOff), 0);
        parkPointer();

        tavro = launch();
        EXPECT_TRUE(
            server.eventually("the mode off in the defaults file", [this] { return defaultsSayOff(); }));
        EXPECT_EQ(tavro->linesOfOutput(turnedOff), 0);
        EXPECT_TRUE(isRestored());
        quit(tavro);
    }
}

TEST_F(ProcessTest, TerminationSignalsTurnPresentationModeOffFirst) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        SCOPED_TRACE(strsignal(signal));
        auto tavro = launch();
        present(*tavro);
        tavro->signal(signal);
        EXPECT_EQ(tavro->end(), "exited with 0");
        EXPECT_EQ(tavro->linesOfOutput(turnedOff), 1);
        EXPECT_EQ(complaints(*tavro), "");
        EXPECT_TRUE(defaultsSayOff());
        EXPECT_TRUE(isRestored());
    }
}

TEST_F(ProcessTest, TheSessionsEndAndNotItsSavingTurnsPresentationModeOff) {
    SessionManager manager;
    auto how = settings();
    how.environment["SESSION_MANAGER"] = manager.address();
    const auto front = server.active();
    TavroProcess tavro(how);
    const auto reaches = [&](const std::string& what, const std::function<bool()>& condition) {
        return server.eventually(what, [&] {
            manager.process();
            return condition();
        });
    };
    ASSERT_TRUE(reaches("the client in the session, and its item",
                        [&] { return manager.hasClient() && manager.hasSaved() && tray.showsItem(); }));
    closePopover(tavro, front);
    present(tavro);
    manager.shutDown();
    ASSERT_TRUE(reaches("the client ready for the end", [&] { return manager.hasSaved(); }));
    waitForTray(true); // a program that answers has dealt with that
    EXPECT_EQ(tavro.linesOfOutput(turnedOff), 0);
    EXPECT_TRUE(areMinimised(windowsBesides("Chat")));
    manager.die();
    EXPECT_EQ(tavro.end(), "exited with 0");
    EXPECT_EQ(tavro.linesOfOutput(turnedOff), 1);
    EXPECT_TRUE(isRestored());
}

TEST_F(ProcessTest, TheFirstLaunchMakesItALoginItemAndLaterOnesLeaveThatToTheUser) {
    const auto entry = config.path() / "autostart" / "com.vantrelo.TavroPRO.desktop";
    auto tavro = launch();
    EXPECT_TRUE(server.eventually("the entry", [&] { return std::filesystem::exists(entry); }));
    quit(tavro);
    EXPECT_EQ(tavro->errors(), "");
    EXPECT_TRUE(Session::run("desktop-file-validate '" + entry.string() + "'"));

    std::filesystem::remove(entry);
    tavro = launch();
    quit(tavro);
    EXPECT_FALSE(std::filesystem::exists(entry));
}

TEST_F(ProcessTest, ASecondLaunchActivatesTheFirst) {
    auto first = launch();
    TavroProcess second(settings());
    EXPECT_EQ(second.end(), "exited with 0");
    EXPECT_EQ(second.output(), "TavroPRO is running already and was activated\n");
    EXPECT_EQ(second.errors(), "");
    EXPECT_TRUE(tray.showsItem());
    toggle(*first);
    EXPECT_EQ(first->linesOfOutput(turnedOn), 1);
    quit(first);
}

TEST_F(ProcessTest, ASecondLaunchGivesUpAFirstThatHangsOrIsOnAnotherBus) {
    auto first = launch();
    auto onAnotherBus = settings();
    onAnotherBus.wrapper = {"dbus-run-session", "--"};
    const std::pair<const char*, TavroProcess::Launch> cases[] = {{"hangs", settings()},
                                                                  {"on another bus", onAnotherBus}};
    first->signal(SIGSTOP);
    for (const auto& [what, how] : cases) {
        SCOPED_TRACE(what);
        TavroProcess second(how);
        EXPECT_EQ(second.end(), "exited with 1");
        EXPECT_EQ(second.output(), "TavroPRO is running already and does not answer\n");
        first->signal(SIGCONT);
    }
    toggle(*first);
    EXPECT_EQ(first->linesOfOutput(turnedOn), 1);
    quit(first);
}

TEST_F(ProcessTest, WithoutADisplayItSaysSoAndEnds) {
    for (const auto* display : {"", ":63999", "nonsense"}) {
        SCOPED_TRACE(display);
        auto how = settings();
        how.environment["DISPLAY"] = display;
        TavroProcess tavro(how);
        EXPECT_EQ(tavro.end(), "exited with 1");
        EXPECT_EQ(lines(tavro.errors()), 1) << tavro.errors();
        EXPECT_EQ(tavro.output(), "");
    }
}

TEST_F(ProcessTest, SpeaksTheLanguageOfTheSession) {
    const std::string exportedMenu = R"(
        ask() { dbus-send --session --print-reply --dest="$@"; }
        item=$(ask org.kde.StatusNotifierWatcher /StatusNotifierWatcher org.freedesktop.DBus.Properties.Get \
            string:org.kde.StatusNotifierWatcher string:RegisteredStatusNotifierItems |
            sed -n 's|.*string "\([^/"]*\).*|\1|p')
        ask "$item" /MenuBar com.canonical.dbusmenu.GetLayout int32:0 int32:-1 array:string: | grep -q )";
    struct Case {
        const char *language, *locale, *menuItem;
    };
    for (const auto& [language, locale, menuItem] : {
             Case{"", "de_DE.UTF-8", "Einstellungen"},
             Case{"de_AT:en", "en_US.UTF-8", "Einstellungen"},
             Case{"fr:de", "fr_FR.UTF-8", "Einstellungen"},
             Case{"en:de", "de_DE.UTF-8", "Preferences"}, // the texts are English without a translation
             Case{"fr", "C.UTF-8", "Preferences"},
         }) {
        SCOPED_TRACE(std::string(language) + " " + locale);
        auto how = settings();
        how.environment = {{"LANGUAGE", language}, {"LC_ALL", ""}, {"LC_MESSAGES", ""}, {"LANG", locale}};
        auto tavro = launch(how);
        EXPECT_TRUE(Session::run(exportedMenu + menuItem));
        quit(tavro);
    }
}
