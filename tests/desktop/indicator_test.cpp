#include "support/desktop/ClientApplication.h"
#include "support/machines/LinuxMachineTest.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "audio/AlertView.h"
#include "platform/input/KeyboardLayout.h"
#include "platform/linux/notifications/XBubbles.h"
#include "platform/windows/OverlayWindow.h"
#include "platform/windows/Screens.h"

#include <QApplication>

#include <algorithm>

#include <X11/XKBlib.h> // the last one: its macros have names of ours

class Indicator : public LinuxMachineTest {
protected:
    static xcb_window_t number(const tavro::AlertView& alert) {
        return static_cast<xcb_window_t>(alert.window->windowNumber());
    }

    static constexpr Rect place{860, 750, 200, 200};
};

TEST_F(Indicator, StandsAboveEverythingAndTakesNoClicks) {
    ClientApplication below(server, "Below"), other(server, "Other");
    const auto window = below.addWindow({800, 700, 320, 300});
    const auto focused = other.addWindow({100, 100, 300, 200});
    ASSERT_TRUE(shows("the focus", [&] { return server.active() == focused; }));
    const auto before = server.screenshot(place);
    const tavro::AlertView alert(true);
    const auto isDrawn = [&] {
        const auto now = server.screenshot(place);
        return now[100 * 200 + 20] == 0 && std::ranges::count(now, 0xFFFFFFu) > 500;
    };
    EXPECT_TRUE(shows("the indicator", isDrawn));
    EXPECT_EQ(server.place(number(alert)), place);
    EXPECT_EQ(server.values(number(alert), "_COMPTON_SHADOW"), std::vector{0u});
    const auto now = server.screenshot(place);
    for (const std::size_t corner : {0, 199, 199 * 200, 200 * 200 - 1})
        EXPECT_EQ(now[corner], before[corner]) << corner;
    EXPECT_EQ(server.active(), focused);
    EXPECT_EQ(std::ranges::count(server.clients(), number(alert)), 0);
    input.click({960, 850}, Input::Button::left);
    EXPECT_TRUE(shows("the click in the window below", [&] { return server.active() == window; }));
    EXPECT_TRUE(isDrawn()) << "and still above it";
    server.switchWorkspace(1);
    EXPECT_TRUE(shows("the other workspace", [&] { return !server.isViewable(window) && isDrawn(); }));
    server.switchWorkspace(0);
    alert.window->close();
    EXPECT_TRUE(shows("its end", [&] { return !server.isViewable(number(alert)); }));
    parkPointer();
}

// The window manager once moved a new indicator back to where it had been made.
TEST_F(Indicator, StandsInTheSamePlaceEveryTime) {
    for (int time = 0; time < 20; ++time) {
        SCOPED_TRACE(time);
        const tavro::AlertView alert(time % 2 == 0);
        ASSERT_TRUE(shows("its place", [&] { return server.place(number(alert)) == place; }));
        for (int turn = 0; turn < 5; ++turn) { // whatever was asked of the window manager has been done
            server.moveToWorkspace(server.applicationWindows().front(), 0);
            QCoreApplication::processEvents();
        }
        EXPECT_EQ(server.place(number(alert)), place);
        alert.window->close();
    }
}

TEST_F(LinuxMachineTest, BubblesAreInvisibleWhileKeptAway) {
    const Rect place{100, 300, 300, 80}, otherPlace{100, 500, 300, 80};
    const auto bare = server.screenshot(place), otherBare = server.screenshot(otherPlace);
    const auto isSeen = [&](bool first, bool other) {
        return (server.screenshot(place) != bare) == first &&
               (server.screenshot(otherPlace) != otherBare) == other;
    };
    const auto x = tavro::XConnection::open(log);
    x->start();
    tavro::XBubbles bubbles(*x);
    ClientApplication notifier(server, "Notifier");
    notifier.addBubble(place);
    EXPECT_TRUE(shows("a bubble", [&] { return isSeen(true, false); }));
    bubbles.keepAway(true);
    EXPECT_TRUE(shows("none", [&] { return isSeen(false, false); }));
    const auto other = notifier.addBubble(otherPlace);
    EXPECT_TRUE(shows("another one, concealed", [&] {
        return !server.values(other, "_NET_WM_WINDOW_OPACITY").empty() && isSeen(false, false);
    }));
    bubbles.keepAway(false);
    EXPECT_TRUE(shows("both", [&] { return isSeen(true, true); }));
}

TEST_F(LinuxMachineTest, AnItemIgnoresClicksThatItDidNotAskFor) {
    const auto item = machine.statusBar().statusItem(tavro::StatusBar::variableLength);
    std::string seen;
    item->button()->setAction([&] {
        seen +=
            machine.application().currentEvent().type == tavro::EventType::rightMouseUp ? "right " : "left ";
    });
    item->button()->sendActionOn(eventMask(tavro::EventType::rightMouseUp));
    item->button()->setImage(tavro::NamedImage{"menubar-off"});
    ASSERT_TRUE(shows("the item", [&] { return tray.showsItem(); }));
    const auto name = "org.kde.StatusNotifierItem-" + std::to_string(::getpid()) + "-1";
    for (const auto* click : {"Activate", "ContextMenu"}) // whose answers only this process could give
        EXPECT_TRUE(Session::run("dbus-send --session --type=method_call --dest=" + name +
                                 " /StatusNotifierItem org.kde.StatusNotifierItem." + click +
                                 " int32:0 int32:0"));
    EXPECT_TRUE(shows("the second click alone", [&] { return seen == "right "; })) << seen;
}

TEST_F(LinuxMachineTest, TheMainScreenHasTheFocusedWindow) {
    const auto screens = machine.screens().screens();
    ASSERT_EQ(screens.size(), 2u);
    ClientApplication other(server, "Other");
    for (const std::size_t index : {1, 0}) {
        other.addWindow({index == 0 ? 100 : 2500, 300, 300, 200});
        EXPECT_TRUE(
            shows("the other main screen", [&] { return machine.screens().mainScreen() == screens[index]; }));
    }
}

TEST_F(LinuxMachineTest, AKeysTextFollowsTheLayout) {
    const tavro::KeyboardShortcuts::Shortcut shortcut(46, tavro::cmdKey | tavro::shiftKey);
    const std::pair<const char*, const char*> layouts[] = {
        {"fr", "⇧⌘,"}, {"ru,us", "⇧⌘M"}, {"ru", "⇧⌘M"}, {"de", "⇧⌘M"}, {"us", "⇧⌘M"}};
    for (const auto& [layout, text] : layouts) {
        SCOPED_TRACE(layout);
        ASSERT_TRUE(Session::run(std::string("setxkbmap -layout ") + layout));
        EXPECT_TRUE(shows("the key's text", [&] { return shortcut.description() == text; }));
    }
    ASSERT_TRUE(Session::run("setxkbmap -layout us,fr,ru"));
    auto* display = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->display();
    const std::pair<unsigned, const char*> groups[] = {{1, "⇧⌘,"}, {2, "⇧⌘M"}}; // ru is not Latin
    for (const auto& [group, text] : groups) {
        XkbLockGroup(display, XkbUseCoreKbd, group);
        XFlush(display);
        EXPECT_TRUE(
            shows("the key's text in the next layout", [&] { return shortcut.description() == text; }));
    }
    XkbLockGroup(display, XkbUseCoreKbd, 0);
    ASSERT_TRUE(Session::run("setxkbmap -layout us"));
}
