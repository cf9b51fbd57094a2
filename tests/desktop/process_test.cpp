#include "support/desktop/DesktopTest.h"
#include "support/servers/SessionManager.h"

#include <csignal>

class ProcessTest : public DesktopTest {
protected:
    /// Presentation mode with the other applications hidden.
    void present(TavroProcess& tavro) {
        toggle(tavro);
        EXPECT_TRUE(othersAreHidden());
    }

    bool defaultsSayOff() const { return defaultsHold("tavro", false); }

    /// At the item, by the right button or by the left one with Control.
    Rect openMenu(bool withControl) {
        if (withControl)
            input.press(Input::Key::control);
        clickItem(withControl ? Input::Button::left : Input::Button::right);
        EXPECT_TRUE(server.eventually("one menu", [this] { return server.menus().size() == 1; }));
        if (withControl) // a hand holds the key until the menu is there
            input.release(Input::Key::control);
        const auto menu = server.place(server.menus().at(0));
        const auto item = tray.itemPlace();
        EXPECT_TRUE(menu.y >= item.y && menu.y <= 32 && menu.x <= item.x &&
                    menu.x + menu.width >= item.x - 20)
            << menu;
        return menu;
    }

    /// The entry is lit when the menu follows the pointer; a click that comes sooner may be lost.
    void chooseLast(const Rect& menu) {
        const Point entry{menu.x + menu.width / 2, menu.y + menu.height - 14};
        const auto unlit = server.screenshot(menu);
        input.moveTo(entry);
        EXPECT_TRUE(server.eventually("the entry lit", [&] { return server.screenshot(menu) != unlit; }));
        input.click(entry, Input::Button::left);
    }
};

TEST_F(ProcessTest, QuitIsInTheMenuAndTheNextLaunchBringsBackWhatWasHidden) {
    for (const bool withControl : {false, true}) {
        SCOPED_TRACE(withControl ? "Control-click" : "right click");
        auto tavro = launch();
        openMenu(withControl);
        EXPECT_TRUE(closeMenu()); // and leaves the next click to the program
        present(*tavro);
        ASSERT_TRUE(server.eventually("the mode in the defaults file", [this] { return !defaultsSayOff(); }));
        chooseLast(openMenu(withControl));
        EXPECT_EQ(tavro->end(), "exited with 0");
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
    // From the first launch on it is a login item.
    EXPECT_TRUE(std::filesystem::exists(config.path() / "autostart" / "com.vantrelo.TavroPRO.desktop"));
}

TEST_F(ProcessTest, SessionEndTurnsPresentationModeOffButSavingDoesNot) {
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

TEST_F(ProcessTest, ASecondLaunchActivatesTheFirstOrReportsThatItIsSilent) {
    const auto silent = "TavroPRO is running already and does not answer\n";
    const std::tuple<bool, const char*, const char*, const char*> cases[] = {
        {false, "env", "exited with 0", "TavroPRO is running already and was activated\n"},
        {true, "env", "exited with 1", silent},
        {false, "dbus-run-session", "exited with 1", silent},
    };
    auto first = launch();
    for (const auto& [hangs, wrapper, end, output] : cases) {
        SCOPED_TRACE(std::string(wrapper) + (hangs ? ", the first hangs" : ""));
        if (hangs)
            first->signal(SIGSTOP);
        auto how = settings();
        how.wrapper = {wrapper, "--"};
        TavroProcess second(how);
        EXPECT_EQ(second.end(), end);
        EXPECT_EQ(second.output(), output);
        EXPECT_EQ(second.errors().find("tavropro"), std::string::npos) << second.errors();
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
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"", "de_DE.UTF-8", "Einstellungen"},
        {"nl:de", "nl_NL.UTF-8", "Einstellungen"},
        {"en:de", "de_DE.UTF-8", "Preferences"}, // the texts are English without a translation
        {"nl", "C.UTF-8", "Preferences"},
    };
    for (const auto& [language, locale, menuItem] : cases) {
        SCOPED_TRACE(std::string(language) + " " + locale);
        auto how = settings();
        how.environment = {{"LANGUAGE", language}, {"LC_ALL", ""}, {"LC_MESSAGES", ""}, {"LANG", locale}};
        auto tavro = launch(how);
        EXPECT_TRUE(Session::run(exportedMenu + menuItem));
        quit(tavro);
    }
}
