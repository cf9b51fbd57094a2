#include "support/desktop/DesktopTest.h"

#include <algorithm>
#include <csignal>

using TrayHost = DesktopTest;

TEST_F(TrayHost, TheItemShowsWhenThePanelComesAndWhenItComesAgain) {
    const auto killPanel = [this] {
        Session::signal("panel", SIGKILL);
        return server.eventually("no panel", [this] {
            return std::ranges::none_of(server.clients(), [this](auto window) {
                return server.has(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DOCK");
            });
        });
    };
    auto withPanel = launch();
    const auto item = tray.picture();
    quit(withPanel);
    ASSERT_TRUE(killPanel());
    TavroProcess tavro(settings()); // whose popover stands where the panel comes, and makes room
    EXPECT_TRUE(
        server.eventually("a line that there is no status bar", [&] { return lines(tavro.errors()) == 1; }));
    for (const auto* what : {"first panel", "restarted panel", "panel restarted again"}) {
        SCOPED_TRACE(what);
        ASSERT_TRUE(killPanel());
        Session::start("panel");
        EXPECT_TRUE(server.eventually("the item in the tray", [&] { return tray.picture() == item; }));
        toggle(tavro);
        toggle(tavro);
    }
    EXPECT_EQ(lines(complaints(tavro)), 1) << complaints(tavro);
    tavro.signal(SIGTERM);
    EXPECT_EQ(tavro.end(), "exited with 0");
}
