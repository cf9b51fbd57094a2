#include "support/desktop/ClientApplication.h"
#include "support/desktop/DesktopTest.h"

#include <algorithm>
#include <csignal>
#include <fstream>

class Popover : public DesktopTest {
protected:
    /// The popover as the launch shows it, with the focus.
    std::unique_ptr<TavroProcess> launchWithPopover() {
        auto tavro = std::make_unique<TavroProcess>(settings());
        waitForTray(false);
        EXPECT_TRUE(showsPopover(*tavro));
        return tavro;
    }

    Rect place(const TavroProcess& tavro) { return server.place(popover(tavro)); }

    std::uint32_t pixel(const TavroProcess& tavro, Point point) {
        const auto corner = place(tavro);
        return server.screenshot({corner.x + point.x, corner.y + point.y, 1, 1}).front();
    }

    void clickIn(const TavroProcess& tavro, Point point) {
        const auto corner = place(tavro);
        input.click({corner.x + point.x, corner.y + point.y}, Input::Button::left);
    }

    void TearDown() override {
        putPanel(top);
        DesktopTest::TearDown();
    }

    struct PanelPlace {
        const char* name;
        const char* settings; // mode (0 along the screen, 1 upright), snap position, output
        Rect panel;
        Point item;
    };
    static constexpr PanelPlace top{"top", "0 6 Primary", {0, 0, 1920, 29}, {1908, 14}},
        left{"left", "1 6 Primary", {0, 0, 29, 1080}, {14, 1066}},
        secondBottom{"second, bottom", "0 8 DUMMY1", {1920, 871, 1440, 29}, {3346, 886}};

    bool panelIsAt(const Rect& expected) const {
        return std::ranges::any_of(server.clients(), [&](auto window) {
            return server.has(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DOCK") &&
                   server.place(window) == expected;
        });
    }

    void putPanel(const PanelPlace& to) {
        EXPECT_TRUE(Session::run(std::string("set -- ") + to.settings + R"(
            set_panel() { xfconf-query -c xfce4-panel -p "/panels/panel-1/$1" -n -t "$2" -s "$3"; }
            set_panel mode int "$1" && set_panel position string "p=$2;x=0;y=0" &&
                set_panel output-name string "$3")"));
        EXPECT_TRUE(server.eventually(std::string("the panel's place: ") + to.name,
                                      [&] { return panelIsAt(to.panel); }));
    }

    /// Waits until the item is drawn there, in more colours than the panel has, and clicks on it.
    void clickItemAt(const PanelPlace& where) {
        const Rect area{where.item.x - 9, where.item.y - 9, 18, 18};
        EXPECT_TRUE(server.eventually(std::string("the item: ") + where.name, [&] {
            const auto pixels = server.screenshot(area);
            return std::set(pixels.begin(), pixels.end()).size() > 5;
        }));
        input.click(where.item, Input::Button::left);
    }

    // In the window, whose rows stand in the middle.
    static constexpr Point bigSwitch{300, 101};
};

TEST_F(Popover, OpensUnderTheItemAndClosesWhenTheUserWorksElsewhere) {
    const auto front = server.active();
    auto tavro = launchWithPopover();
    const auto atLaunch = place(*tavro);
    EXPECT_EQ(atLaunch, (Rect{1580, 29, 340, 400}));
    clickItem(Input::Button::left);
    EXPECT_TRUE(showsNoPopover(*tavro, front));
    clickItem(Input::Button::left);
    EXPECT_TRUE(showsPopover(*tavro));
    EXPECT_EQ(place(*tavro), atLaunch);
    input.type(Input::Key::escape);
    EXPECT_TRUE(showsNoPopover(*tavro, front));
    clickItem(Input::Button::left);
    EXPECT_TRUE(showsPopover(*tavro));
    waitForTray(false); // the popover has asked for the focus by then, and not only got it
    ClientApplication other(server, "Alpha");
    const auto window = other.addWindow({300, 200, 300, 200});
    // The popover may have asked for the focus once more when it was opened: then the user clicks again.
    EXPECT_TRUE(server.eventually("the end of the popover, and the window in front", [&] {
        input.click({450, 300}, Input::Button::left);
        return popover(*tavro) == XCB_NONE && server.active() == window;
    }));
    parkPointer();
    quit(tavro);
}

TEST_F(Popover, TheSwitchKeepsTheApplicationThatWasInFront) {
    const auto front = server.active();
    auto tavro = launchWithPopover();
    clickIn(*tavro, bigSwitch);
    ASSERT_TRUE(tavro->waitForLine(turnedOn, 1));
    EXPECT_TRUE(showsNoPopover(*tavro, front));
    EXPECT_TRUE(everyScreenIsCovered());
    EXPECT_TRUE(server.eventually("the others hidden", [&] { return areMinimised(windowsBesides("Chat")); }));
    EXPECT_FALSE(server.isMinimised(front));
    waitForTray(true);
    clickItem(Input::Button::left);
    EXPECT_TRUE(showsPopover(*tavro));
    clickIn(*tavro, bigSwitch);
    ASSERT_TRUE(tavro->waitForLine(turnedOff, 1));
    EXPECT_TRUE(everyIconShows());
    parkPointer();
    quit(tavro);
}

// Two pixels a point: the window is 680 by 800 of them.
TEST_F(Popover, OpensBesideThePanelAtAnyScaleAndClosesWhenThatMoves) {
    const auto front = server.active();
    putPanel(secondBottom);
    parkPointer();
    auto scaled = settings();
    scaled.environment["QT_SCALE_FACTOR"] = "2";
    auto tavro = std::make_unique<TavroProcess>(scaled);
    ASSERT_TRUE(showsPopover(*tavro));
    EXPECT_EQ(place(*tavro), (Rect{2680, 71, 680, 800}));
    putPanel(left);
    EXPECT_TRUE(showsNoPopover(*tavro, front));
    clickItemAt(left);
    ASSERT_TRUE(showsPopover(*tavro));
    EXPECT_EQ(place(*tavro), (Rect{30, 280, 680, 800}));
    clickIn(*tavro, {bigSwitch.x * 2, bigSwitch.y * 2});
    ASSERT_TRUE(tavro->waitForLine(turnedOn, 1));
    EXPECT_TRUE(showsNoPopover(*tavro, front));
    putPanel(top);
    quit(tavro);
}

// The theme and the letters of the desktop, changed while the program runs.
TEST_F(Popover, LooksLikeTheRestOfTheDesktop) {
    const auto setting = [](const char* name, const std::string& value) {
        return Session::run(std::string("xfconf-query -c xsettings -p ") + name + " -s '" + value + "'");
    };
    auto tavro = launchWithPopover();
    const Point background{10, 50};
    const auto light = pixel(*tavro, background);
    const auto divider = [&] {
        int y = background.y;
        while (y < 300 && pixel(*tavro, {10, y}) == light)
            ++y;
        return y;
    };
    const auto place = divider();
    ASSERT_TRUE(setting("/Gtk/FontName", "DejaVu Sans 18"));
    EXPECT_TRUE(server.eventually("taller rows", [&] { return divider() < place - 20; }));
    ASSERT_TRUE(setting("/Net/ThemeName", "Greybird-dark"));
    EXPECT_TRUE(server.eventually("a dark popover", [&] { return pixel(*tavro, background) == 0x2E2E2E; }));
    ASSERT_TRUE(setting("/Net/ThemeName", "Greybird"));
    ASSERT_TRUE(setting("/Gtk/FontName", "DejaVu Sans 9"));
    EXPECT_TRUE(server.eventually("the former looks", [&] { return divider() == place; }));
    quit(tavro);
}

TEST_F(Popover, OpeningItHundredsOfTimesTakesNoMoreMemory) {
    auto tavro = launch();
    const auto memory = [&] {
        std::ifstream file("/proc/" + std::to_string(tavro->pid()) + "/status");
        std::string word;
        long kilobytes = 0;
        while (file >> word && word != "VmRSS:") {
        }
        file >> kilobytes;
        return kilobytes;
    };
    constexpr int times = 300, first = 100;
    [[maybe_unused]] long before = 0;
    for (int i = 0; i < times; ++i) {
        if (i == first)
            before = memory();
        input.click(tray.itemPlace(), Input::Button::left);
        ASSERT_TRUE(server.eventually("the change", [&] {
            return (popover(*tavro) != XCB_NONE) == (i % 2 == 0);
        })) << i;
    }
#ifndef __SANITIZE_ADDRESS__ // which keeps what was let go of, and finds leaks itself
    EXPECT_LT(memory() - before, 1024);
#endif
    parkPointer();
    quit(tavro);
}
