#include "support/desktop/DesktopTest.h"

#include <algorithm>
#include <fstream>

namespace {

/// Position of each window in the stacking order, bottom to top; all of them are in it.
std::vector<std::ptrdiff_t> heights(const std::vector<xcb_window_t>& stacking,
                                    const std::vector<xcb_window_t>& windows) {
    std::vector<std::ptrdiff_t> result;
    result.reserve(windows.size());
    for (const auto window : windows)
        result.push_back(std::ranges::find(stacking, window) - stacking.begin());
    return result;
}

} // namespace

class Presentation : public DesktopTest {
protected:
    void expectCoversBetweenIconsAndWindows(const TavroProcess& tavro) {
        const auto stacking = server.clients();
        const auto ours = heights(stacking, covers(tavro));
        ASSERT_EQ(ours.size(), server.screens().size());
        EXPECT_GT(std::ranges::min(ours), heights(stacking, {iconWindow()}).front()) << "below the icons";
        EXPECT_EQ(std::ranges::max(ours), static_cast<std::ptrdiff_t>(ours.size())) << "above another window";
    }

    void expectDesktopWindowsOfTheirScreensExactSize(const std::vector<xcb_window_t>& covers) {
        std::vector<Rect> places;
        for (const auto cover : covers) {
            places.push_back(server.place(cover));
            EXPECT_TRUE(server.has(cover, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DESKTOP"));
            EXPECT_EQ(server.values(cover, "_NET_WM_DESKTOP"), std::vector{0xFFFFFFFFu});
            for (const auto* state : {"SKIP_TASKBAR", "SKIP_PAGER", "STICKY", "BELOW"})
                EXPECT_TRUE(server.has(cover, "_NET_WM_STATE", std::string("_NET_WM_STATE_") + state))
                    << state;
        }
        EXPECT_THAT(places, testing::UnorderedElementsAreArray(server.screens()));
    }

    void arriveAt(std::uint32_t workspace) {
        server.switchWorkspace(workspace);
        ASSERT_TRUE(server.eventually("the arrival", [&] { return server.workspace() == workspace; }));
    }

    /// On and off with windows of three applications, bottom to top. The last one's application is the one
    /// that stays; a small letter stands for a window that the user has minimised.
    void toggleWith(const std::string& arrangement, TavroProcess& tavro) {
        ClientApplication a(server, "Alpha"), b(server, "Beta"), c(server, "Gamma");
        const auto upper = [](char letter) { return static_cast<char>(letter & ~0x20); };
        std::set<xcb_window_t> minimised;
        std::vector<xcb_window_t> others;
        int offset = 0;
        for (const char letter : arrangement) {
            auto& application = upper(letter) == 'A' ? a : upper(letter) == 'B' ? b : c;
            const auto window = application.addWindow({300 + offset, 200 + offset, 300, 200});
            offset += 40;
            if (letter != upper(letter)) {
                server.minimise(window);
                ASSERT_TRUE(server.eventually("it minimised", [&] { return server.isMinimised(window); }));
                minimised.insert(window);
            }
            if (upper(letter) != upper(arrangement.back()))
                others.push_back(window);
        }
        const auto stacking = server.applicationWindows();
        const auto front = server.active();
        toggle(tavro);
        ASSERT_TRUE(server.eventually("the others minimised", [&] { return areMinimised(others); }));
        EXPECT_EQ(server.active(), front);
        toggle(tavro);
        EXPECT_TRUE(isRestored(stacking, front, minimised));
    }
};

TEST_F(Presentation, CoversTheIconsOfEveryScreenAndHidesTheOtherApplications) {
    const auto front = server.active();
    const auto frontPlace = server.place(front);
    ASSERT_TRUE(everyIconShows());
    auto tavro = launch();
    const auto itemWhenOff = tray.picture();

    toggle(*tavro);
    EXPECT_TRUE(everyScreenIsCovered());
    EXPECT_TRUE(server.eventually("the other applications minimised",
                                  [&] { return areMinimised(windowsBesides("Chat")); }));
    EXPECT_EQ(server.active(), front);
    EXPECT_FALSE(server.isMinimised(front));
    EXPECT_EQ(server.place(front), frontPlace);
    expectCoversBetweenIconsAndWindows(*tavro);
    expectDesktopWindowsOfTheirScreensExactSize(covers(*tavro));
    EXPECT_TRUE(
        server.eventually("another picture of the item", [&] { return tray.picture() != itemWhenOff; }));

    toggle(*tavro);
    EXPECT_TRUE(server.eventually("no cover", [&] { return covers(*tavro).empty(); }));
    EXPECT_TRUE(everyIconShows());
    EXPECT_TRUE(isRestored());
    EXPECT_TRUE(
        server.eventually("the first picture of the item", [&] { return tray.picture() == itemWhenOff; }));
    quit(tavro);
    EXPECT_EQ(complaints(*tavro), "");
}

TEST_F(Presentation, CoversShowTheCustomWallpaperWhereItIsAPicture) {
    const auto documents = config.path() / "My papers";
    std::filesystem::create_directory(documents);
    std::ofstream(config.path() / "user-dirs.dirs") << "XDG_DOCUMENTS_DIR=\"" << documents.string() << "\"\n";
    std::ofstream(defaultsFile()) << "<plist version=\"1.0\"><dict><key>changeWallpaper</key><true/>"
                                     "<key>wallpaperFile</key><true/></dict></plist>";
    constexpr std::uint32_t red = 0xc83232, blue = 0x3232c8;
    for (const bool isPicture : {true, false}) {
        SCOPED_TRACE(isPicture ? "a picture" : "no picture");
        const std::string make = isPicture ? "convert -size 200x300 xc:#c83232 xc:#3232c8 +append" : "echo >";
        ASSERT_TRUE(Session::run(make + " '" + (documents / "wallpaper.png").string() + "'"));
        auto tavro = launch();
        toggle(*tavro);
        if (isPicture)
            for (const auto& [x, y, width, height] : server.screens()) {
                const auto colorAt = [&, x = x, y = y, width = width, height = height](int eighths) {
                    return server.screenshot({x + width * eighths / 8, y + height / 8, 1, 1});
                };
                EXPECT_TRUE(server.eventually("the picture, stretched", [&] {
                    return colorAt(1) == Pixels{red} && colorAt(3) == Pixels{red} &&
                           colorAt(5) == Pixels{blue} && colorAt(7) == Pixels{blue};
                }));
            }
        else
            EXPECT_TRUE(everyScreenIsCovered());
        toggle(*tavro);
        quit(tavro);
        EXPECT_EQ(complaints(*tavro), "");
    }
}

TEST_F(Presentation, CoversStayWhateverIsDoneToTheDesktop) {
    const auto menuShows = [this] { return !server.menus().empty(); };
    struct {
        const char* what;
        std::function<void()> act;
        std::function<bool()> isDone;
    } cases[] = {
        {"show desktop", [this] { server.showDesktop(true); },
         [this] {
             return areMinimised(server.applicationWindows()) ||
                    !server.isViewable(server.applicationWindows().back());
         }},
        {"end of show desktop", [this] { server.showDesktop(false); },
         [this] { return server.isViewable(server.applicationWindows().back()); }},
        {"other workspace", [this] { server.switchWorkspace(1); },
         [this] { return server.workspace() == 1; }},
        {"first workspace", [this] { server.switchWorkspace(0); },
         [this] { return server.workspace() == 0; }},
        {"right click on the desktop",
         [this] {
             input.click({400, 700}, Input::Button::right);
         },
         menuShows},
        {"end of the menu", [this] { EXPECT_TRUE(closeMenu()); }, [] { return true; }},
        // Its effect shows when the cover is gone.
        {"click on an icon",
         [this] {
             input.click({78, 85}, Input::Button::left);
         },
         [] { return true; }},
    };
    const auto front = server.active();
    const auto unselected = server.screenshot({28, 40, 100, 110});
    auto tavro = launch();
    toggle(*tavro);
    ASSERT_TRUE(everyScreenIsCovered());
    for (const auto& [what, act, isDone] : cases) {
        SCOPED_TRACE(what);
        act();
        ASSERT_TRUE(server.eventually("the effect", isDone));
        EXPECT_TRUE(everyScreenIsCovered());
        expectCoversBetweenIconsAndWindows(*tavro);
    }
    toggle(*tavro);
    EXPECT_TRUE(everyIconShows());
    EXPECT_TRUE(server.eventually("the icon selected by the click through the cover", [&] {
        return server.screenshot({28, 40, 100, 110}) != unselected;
    }));
    input.click({400, 700}, Input::Button::left);
    EXPECT_TRUE(server.eventually("the icon unselected again", [&] {
        return server.screenshot({28, 40, 100, 110}) == unselected;
    }));
    server.activate(front);
    quit(tavro);
}

TEST_F(Presentation, TurningOffBringsBackTheStackingOrderAndTheFocus) {
    for (const auto* arrangement : {"ABAB", "BAABCBA", "aBCcBA"}) {
        SCOPED_TRACE(arrangement);
        auto tavro = launch();
        toggleWith(arrangement, *tavro);
        quit(tavro);
    }
}

TEST_F(Presentation, AWindowTheUserBringsBackIsTheUsersAgain) {
    ClientApplication other(server, "Alpha"), kept(server, "Beta");
    const auto window = other.addWindow({300, 200, 300, 200});
    const auto front = kept.addWindow({700, 200, 300, 200});
    const auto stacking = server.applicationWindows();
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
    EXPECT_TRUE(server.eventually("the session's windows back", [&] {
        return std::ranges::none_of(stacking,
                                    [&](auto each) { return each != window && server.isMinimised(each); });
    }));
    quit(tavro);
    EXPECT_TRUE(server.isMinimised(window));
}

TEST_F(Presentation, WindowsOfAnotherWorkspaceAreHiddenAndRestoredOnArrival) {
    for (const bool turnsOffThere : {true, false}) {
        SCOPED_TRACE(turnsOffThere ? "turned off there" : "turned off before the return");
        const auto here = server.applicationWindows();
        const auto front = server.active();
        ClientApplication elsewhere(server, "Alpha");
        const auto window = elsewhere.addWindow({300, 200, 300, 200});
        server.moveToWorkspace(window, 1);
        ASSERT_TRUE(server.eventually("the window on the other workspace", [&] {
            server.activate(front);
            return server.values(window, "_NET_WM_DESKTOP") == std::vector{1u} &&
                   !server.isViewable(window) && server.active() == front;
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
        if (!turnsOffThere)
            arriveAt(0);
        toggle(*tavro);
        if (!turnsOffThere) {
            EXPECT_TRUE(isMarked(window)) << "restored while on another workspace";
            arriveAt(1);
        }
        EXPECT_TRUE(server.eventually("the window back in its place", [&] {
            return server.isViewable(window) && !server.isMinimised(window);
        }));
        EXPECT_EQ(server.values(window, "_NET_WM_DESKTOP"), std::vector{1u});
        EXPECT_EQ(server.workspace(), 1u);
        arriveAt(0);
        elsewhere.destroy(window);
        // Who has the focus on arrival is the window manager's choice, and may change until all have come
        // back.
        EXPECT_TRUE(server.eventually("the former windows, their order and the focus", [&] {
            server.activate(front);
            return server.active() == front && server.applicationWindows() == here &&
                   std::ranges::none_of(here, [this](auto each) { return server.isMinimised(each); });
        }));
        quit(tavro);
    }
}

TEST_F(Presentation, TheEndOnAnotherWorkspaceBringsTheWindowsBackWhereTheyWere) {
    const auto windows = server.applicationWindows();
    const auto front = server.active();
    auto tavro = launch();
    toggle(*tavro);
    ASSERT_TRUE(server.eventually("the others hidden", [&] { return areMinimised(windowsBesides("Chat")); }));
    arriveAt(1);
    quit(tavro);
    EXPECT_EQ(server.workspace(), 1u);
    for (const auto window : windows) {
        EXPECT_FALSE(server.isMinimised(window));
        EXPECT_EQ(server.values(window, "_NET_WM_DESKTOP"), std::vector{0u});
    }
    arriveAt(0);
    // Who has the focus on arrival is the window manager's choice.
    EXPECT_TRUE(server.eventually("the focus", [&] {
        server.activate(front);
        return server.active() == front;
    }));
}

TEST_F(Presentation, PreferencesInFrontStayAndComeBackToTheFront) {
    const auto windows = server.applicationWindows();
    auto tavro = launch();
    openPreferences();
    ASSERT_TRUE(server.eventually("the preferences in front", [&] {
        const auto all = server.applicationWindows();
        return all.size() == windows.size() + 1 && server.active() == all.back();
    }));
    const auto preferences = server.active();
    toggle(*tavro);
    EXPECT_TRUE(server.eventually("all others hidden", [&] { return areMinimised(windows); }));
    EXPECT_FALSE(server.isMinimised(preferences));
    toggle(*tavro);
    auto stacking = windows;
    stacking.push_back(preferences);
    EXPECT_TRUE(isRestored(stacking, preferences));
    quit(tavro);
}
