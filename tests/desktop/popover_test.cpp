#include "support/ClientApplication.h"
#include "support/DesktopTest.h"

#include <algorithm>
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

    testing::AssertionResult showsPopover(const TavroProcess& tavro) {
        return server.eventually("the popover with the focus", [&] {
            return popover(tavro) != XCB_NONE && server.active() == popover(tavro);
        });
    }

    testing::AssertionResult showsNoPopover(const TavroProcess& tavro, xcb_window_t front) {
        return server.eventually("the end of the popover, and the window in front",
                                 [&] { return popover(tavro) == XCB_NONE && server.active() == front; });
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

    std::string defaults() const {
        std::ifstream file(defaultsFile());
        return {std::istreambuf_iterator<char>(file), {}};
    }

    // In the window, whose rows stand in the middle.
    static constexpr Point bigSwitch{300, 101}, speakerRow{100, 267};
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
    input.press(Input::Key::escape);
    input.release(Input::Key::escape);
    EXPECT_TRUE(showsNoPopover(*tavro, front));
    clickItem(Input::Button::left);
    EXPECT_TRUE(showsPopover(*tavro));
    ClientApplication other(server, "Alpha");
    const auto window = other.addWindow({300, 200, 300, 200});
    EXPECT_TRUE(showsNoPopover(*tavro, window));
    parkPointer();
    quit(tavro);
}

TEST_F(Popover, TheSwitchHasItsColoursAndKeepsTheApplicationThatWasInFront) {
    const auto front = server.active();
    auto tavro = launchWithPopover();
    const Point leftEnd{262, 101}, rightEnd{314, 101};
    EXPECT_TRUE(server.eventually("the knob at the left end", [&] {
        return pixel(*tavro, {274, 101}) == 0xFFFFFF && pixel(*tavro, rightEnd) == 0x808080;
    }));
    EXPECT_EQ(pixel(*tavro, leftEnd), 0xFFFFFFu);
    clickIn(*tavro, bigSwitch);
    ASSERT_TRUE(tavro->waitForLine(turnedOn, 1));
    EXPECT_TRUE(showsNoPopover(*tavro, front));
    EXPECT_TRUE(everyScreenIsCovered());
    EXPECT_TRUE(server.eventually("the others hidden", [&] { return areMinimised(windowsBesides("Chat")); }));
    EXPECT_FALSE(server.isMinimised(front));
    waitForTray(true);
    clickItem(Input::Button::left);
    EXPECT_TRUE(showsPopover(*tavro));
    // Blue at the one end of the gradient, and the knob at the other.
    EXPECT_TRUE(server.eventually("the knob at the right end", [&] {
        const auto track = pixel(*tavro, leftEnd);
        return pixel(*tavro, {308, 101}) == 0xFFFFFF && (track & 0xFF) > 0xC0 && track >> 16 < 0xA0;
    }));
    clickIn(*tavro, bigSwitch);
    ASSERT_TRUE(tavro->waitForLine(turnedOff, 1));
    EXPECT_TRUE(everyIconShows());
    parkPointer();
    quit(tavro);
}

TEST_F(Popover, ARowStoresItsOptionAndTheShortcutsWorkMeanwhile) {
    const auto front = server.active();
    auto tavro = launchWithPopover();
    clickIn(*tavro, speakerRow);
    EXPECT_TRUE(server.eventually("the option in the defaults", [&] {
        const auto text = defaults();
        const auto key = text.find("<key>muteSpeaker</key>");
        return key != std::string::npos && text.find("<true/>", key) < text.find("<key>", key + 1);
    }));
    EXPECT_NE(popover(*tavro), XCB_NONE);
    input.click(tray.itemPlace(), Input::Button::middle);
    ASSERT_TRUE(tavro->waitForLine(turnedOn, 1));
    EXPECT_TRUE(showsNoPopover(*tavro, front)) << "presented";
    parkPointer();
    waitForTray(true);
    toggle(*tavro);
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

TEST_F(Popover, AThousandTimesLeaveNothingBehind) {
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
    constexpr int times = 1000, first = 100;
    long before = 0;
    for (int i = 0; i < times; ++i) {
        if (i == first)
            before = memory();
        input.click(tray.itemPlace(), Input::Button::left);
        ASSERT_TRUE(server.eventually("the change", [&] {
            return (popover(*tavro) != XCB_NONE) == (i % 2 == 0);
        })) << i;
    }
    EXPECT_LT(memory() - before, 2048);
    parkPointer();
    quit(tavro);
}
