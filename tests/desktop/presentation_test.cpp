#include "support/desktop/DesktopTest.h"

#include <algorithm>

class Presentation : public DesktopTest {
protected:
    void arriveAt(std::uint32_t workspace) {
        server.switchWorkspace(workspace);
        ASSERT_TRUE(server.eventually("the arrival", [&] { return server.workspace() == workspace; }));
    }
    /// Who has the focus on arrival is the window manager's choice, and may change until all have come back.
    bool hasFocusAgain(xcb_window_t front) {
        server.activate(front);
        return server.active() == front;
    }
    bool isAnyMinimised(const std::vector<xcb_window_t>& windows) const {
        return std::ranges::any_of(windows, [this](auto window) { return server.isMinimised(window); });
    }
};

TEST_F(Presentation, CoversShowTheCustomWallpaperStretched) {
    write(config.path() / "user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"" + config.path().string() + "\"\n");
    writeDefaults("<key>changeWallpaper</key><true/><key>wallpaperFile</key><true/>");
    constexpr std::uint32_t red = 0xc83232, blue = 0x3232c8;
    const auto colourAt = [this](const Rect& screen, int eighths) {
        return server.screenshot({screen.x + screen.width * eighths / 8, screen.y + screen.height / 8, 1, 1});
    };
    ASSERT_TRUE(Session::run("convert -size 200x300 xc:#c83232 xc:#3232c8 +append '" +
                             (config.path() / "wallpaper.png").string() + "'"));
    auto tavro = launch();
    toggle(*tavro);
    for (const auto& screen : server.screens())
        EXPECT_TRUE(server.eventually("the picture, stretched", [&] {
            return colourAt(screen, 3) == Pixels{red} && colourAt(screen, 5) == Pixels{blue} &&
                   colourAt(screen, 7) == Pixels{blue};
        }));
    toggle(*tavro);
    quit(tavro);
    EXPECT_EQ(complaints(*tavro), "");
}

TEST_F(Presentation, AWindowTheUserBringsBackStays) {
    ClientApplication other(server, "Alpha"), kept(server, "Beta");
    const auto window = other.addWindow({300, 200, 300, 200});
    const auto front = kept.addWindow({700, 200, 300, 200});
    auto windows = server.applicationWindows();
    auto tavro = launch();
    toggle(*tavro);
    // A user's next step comes after the program has taken notice of what the last one did.
    ASSERT_TRUE(server.eventually("the window hidden", [&] { return server.isMinimised(window); }));
    ASSERT_TRUE(everyScreenIsCovered());

    server.activate(window);
    ASSERT_TRUE(server.eventually("the window without a mark",
                                  [&] { return !server.isMinimised(window) && !isMarked(window); }));
    for (const std::uint32_t workspace : {1u, 0u})
        arriveAt(workspace);
    EXPECT_FALSE(server.isMinimised(window)) << "hidden again on return";
    server.minimise(window);
    server.activate(front);
    ASSERT_TRUE(
        server.eventually("the window minimised by the user", [&] { return server.isMinimised(window); }));

    toggle(*tavro);
    std::erase(windows, window);
    EXPECT_TRUE(server.eventually("the session's windows back", [&] { return !isAnyMinimised(windows); }));
    quit(tavro);
    EXPECT_TRUE(server.isMinimised(window));
}

TEST_F(Presentation, WindowsOfAnotherWorkspaceAreHiddenOnArrivalAndStayThere) {
    const auto here = server.applicationWindows();
    const auto front = server.active();
    ClientApplication elsewhere(server, "Alpha");
    const auto window = elsewhere.addWindow({300, 200, 300, 200});
    server.moveToWorkspace(window, 1);
    ASSERT_TRUE(server.eventually("the window on the other workspace", [&] {
        server.activate(front);
        return server.values(window, "_NET_WM_DESKTOP") == std::vector{1u} && !server.isViewable(window) &&
               server.active() == front;
    }));
    auto tavro = launch();
    toggle(*tavro);
    ASSERT_TRUE(server.eventually("the other windows here hidden", [&] {
        return areMinimised({here.begin(), here.end() - 1});
    }));
    EXPECT_FALSE(isMarked(window)) << "touched while on another workspace";
    EXPECT_EQ(server.workspace(), 0u);

    arriveAt(1);
    EXPECT_TRUE(server.eventually("the window hidden on arrival",
                                  [&] { return isMarked(window) && server.isMinimised(window); }));
    EXPECT_TRUE(everyScreenIsCovered());
    arriveAt(0);
    toggle(*tavro);
    EXPECT_TRUE(isMarked(window)) << "restored while on another workspace";
    arriveAt(1);
    EXPECT_TRUE(server.eventually("the window back in its place",
                                  [&] { return server.isViewable(window) && !server.isMinimised(window); }));
    EXPECT_EQ(server.values(window, "_NET_WM_DESKTOP"), std::vector{1u});
    EXPECT_EQ(server.workspace(), 1u);
    arriveAt(0);
    elsewhere.destroy(window);
    EXPECT_TRUE(server.eventually("the former windows, their order and the focus", [&] {
        return hasFocusAgain(front) && server.applicationWindows() == here && !isAnyMinimised(here);
    }));

    toggle(*tavro);
    ASSERT_TRUE(othersAreHidden());
    arriveAt(1);
    quit(tavro);
    EXPECT_EQ(server.workspace(), 1u);
    for (const auto each : here) {
        EXPECT_FALSE(server.isMinimised(each));
        EXPECT_EQ(server.values(each, "_NET_WM_DESKTOP"), std::vector{0u});
    }
    arriveAt(0);
    EXPECT_TRUE(server.eventually("the focus", [&] { return hasFocusAgain(front); }));
}
