#include "support/desktop/DesktopTest.h"

#include <algorithm>
#include <csignal>

using TrayHost = DesktopTest;

TEST_F(TrayHost, TheItemAndThePopoverComeAndGoWithThePanel) {
    const auto killPanel = [this] {
        Session::signal("panel", SIGKILL);
        return server.eventually("no panel", [this] {
            return std::ranges::none_of(server.clients(), [this](auto window) {
                return server.has(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DOCK");
            });
        });
    };
    const auto front = server.active();
    auto withPanel = launch();
    const auto item = tray.picture();
    quit(withPanel);
    ASSERT_TRUE(killPanel());
    TavroProcess tavro(settings()); // whose popover stands where the panel comes, and makes room
    EXPECT_TRUE(
        server.eventually("a line that there is no status bar", [&] { return lines(tavro.errors()) == 1; }));
    for (int start = 0; start < 3; ++start) {
        SCOPED_TRACE(start);
        ASSERT_TRUE(killPanel());
        EXPECT_TRUE(start == 0 || showsNoPopover(tavro, front));
        Session::start("panel");
        EXPECT_TRUE(server.eventually("the item in the tray", [&] { return tray.picture() == item; }));
        toggle(tavro);
        EXPECT_NE(tray.picture(), item);
        toggle(tavro);
        EXPECT_EQ(tray.picture(), item);
        clickItem(Input::Button::left);
        EXPECT_TRUE(showsPopover(tavro));
        EXPECT_EQ(server.place(popover(tavro)), (Rect{1580, 29, 340, 400}));
        parkPointer();
    }
    EXPECT_EQ(lines(complaints(tavro)), 1) << complaints(tavro);
    tavro.signal(SIGTERM);
    EXPECT_EQ(tavro.end(), "exited with 0");
}
