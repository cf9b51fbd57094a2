#include "support/desktop/ClientApplication.h"
#include "support/desktop/DesktopTest.h"
#include "support/desktop/Footprint.h"

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

    // In the window, whose rows stand in the middle.
    static constexpr Point bigSwitch{300, 101};
};

TEST_F(Popover, OpensUnderTheItemAndClosesWhenTheUserWorksElsewhere) {
    const auto front = server.active();
    ClientApplication other(server, "Alpha"); // a window that came later would get the focus, or not
    const auto window = other.addWindow({300, 200, 300, 200});
    server.activate(front);
    ASSERT_TRUE(server.eventually("the window in front", [&] { return server.active() == front; }));
    auto tavro = launchWithPopover();
    const auto atLaunch = place(*tavro);
    EXPECT_EQ(atLaunch, (Rect{1580, 29, 340, 400}));
    clickItem(Input::Button::left);
    EXPECT_TRUE(showsNoPopover(*tavro, front));
    clickItem(Input::Button::left);
    EXPECT_TRUE(showsPopover(*tavro));
    EXPECT_EQ(place(*tavro), atLaunch);
    waitForTray(false); // the popover has asked for the focus by then, and not only got it
    // The popover may have asked for the focus once more when it was opened: then the user clicks again.
    EXPECT_TRUE(server.eventually("the end of the popover, and the window in front", [&] {
        input.click({450, 300}, Input::Button::left);
        return popover(*tavro) == XCB_NONE && server.active() == window;
    }));
    server.activate(front);
    ASSERT_TRUE(server.eventually("the former window in front", [&] { return server.active() == front; }));
    clickItem(Input::Button::left);
    EXPECT_TRUE(showsPopover(*tavro));
    clickIn(*tavro, bigSwitch);
    ASSERT_TRUE(tavro->waitForLine(turnedOn, 1));
    EXPECT_TRUE(showsNoPopover(*tavro, front));
    EXPECT_TRUE(everyScreenIsCovered());
    EXPECT_TRUE(othersAreHidden());
    EXPECT_FALSE(server.isMinimised(front)) << "the application that was in front";
    parkPointer();
    quit(tavro);
}

// Two pixels a point, and a panel of 29 pixels.
TEST_F(Popover, IsTwiceAsLargeAtTwiceTheScale) {
    const auto front = server.active();
    auto scaled = settings();
    scaled.environment["QT_SCALE_FACTOR"] = "2";
    auto tavro = std::make_unique<TavroProcess>(scaled);
    waitForTray(false);
    ASSERT_TRUE(showsPopover(*tavro));
    EXPECT_EQ(place(*tavro), (Rect{1240, 30, 680, 800}));
    clickIn(*tavro, {bigSwitch.x * 2, bigSwitch.y * 2});
    ASSERT_TRUE(tavro->waitForLine(turnedOn, 1));
    EXPECT_TRUE(showsNoPopover(*tavro, front));
    parkPointer();
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
    const auto memory = [&] { return Footprint::of(tavro->pid(), server).privateKilobytes; };
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
