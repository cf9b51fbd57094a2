#include "support/ClientApplication.h"
#include "support/MachineTest.h"

#include "audio/AlertView.h"
#include "platform/menubar/ControlStrip.h"
#include "platform/windows/OverlayWindow.h"

#include <QApplication>

#include <algorithm>

class Indicator : public MachineTest {
protected:
    static xcb_window_t number(const tavro::AlertView& alert) {
        return static_cast<xcb_window_t>(alert.window->windowNumber());
    }

    std::ptrdiff_t pixelsOf(std::uint32_t color) const {
        return std::ranges::count(server.screenshot(trayEnd), color);
    }

    static constexpr Rect place{860, 750, 200, 200};
    static constexpr Rect trayEnd{1896, 0, 24, 28};
};

TEST_F(Indicator, StandsAboveAllAtItsPlaceWithRoundCornersAndTakesNothing) {
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
TEST_F(Indicator, StandsAtItsPlaceEveryTime) {
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

TEST_F(Indicator, TheControlStripShowsAButtonThatTakesClicks) {
    int touches = 0;
    auto button = std::make_shared<tavro::TouchBarButton>();
    button->image = tavro::NamedImage{"mic-on"};
    button->bezelColor = tavro::Color{1, 0, 0, 1};
    button->action = [&touches] { ++touches; };
    const auto item = std::make_shared<tavro::CustomTouchBarItem>("item");
    item->setView(button);
    auto& strip = machine.controlStrip();
    for (const bool isAgain : {false, true}) {
        SCOPED_TRACE(isAgain ? "again" : "first");
        strip.addSystemTrayItem(item);
        strip.setPresence("item", true);
        EXPECT_TRUE(shows("the bezel", [&] { return pixelsOf(0xFF0000) > 50; }));
        for (const auto mouse : {Input::Button::left, Input::Button::middle}) {
            const auto before = touches;
            input.click(tray.itemPlace(), mouse);
            EXPECT_TRUE(shows("the touch", [&] { return touches == before + 1; }));
            parkPointer();
        }
        button->bezelColor = tavro::Color{0, 1, 0, 1};
        item->setView(button);
        EXPECT_TRUE(
            shows("the other bezel", [&] { return pixelsOf(0x00FF00) > 50 && pixelsOf(0xFF0000) == 0; }));
        strip.removeSystemTrayItem(item);
        EXPECT_TRUE(shows("an empty tray", [&] { return tray.isEmpty(); }));
        button->bezelColor = tavro::Color{1, 0, 0, 1};
    }
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
