#include "support/desktop/DesktopTest.h"

#include <algorithm>
#include <csignal>
#include <set>

namespace {

int occurrences(const std::string& text, const std::string& part) {
    int count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

long filesBelow(const std::filesystem::path& folder) {
    using Entries = std::filesystem::recursive_directory_iterator;
    return std::count_if(Entries(folder), Entries(), [](const auto& entry) { return !entry.is_directory(); });
}

} // namespace

class Faults : public DesktopTest {
protected:
    void killIconDesktop() {
        Session::signal("xfdesktop", SIGKILL);
        ASSERT_TRUE(server.eventually("no icon window", [this] { return iconWindow() == XCB_NONE; }));
    }

    void startIconDesktop() {
        Session::start("xfdesktop");
        ASSERT_TRUE(server.eventually("a new icon window", [this] { return iconWindow() != XCB_NONE; }));
    }
};

TEST_F(Faults, UnwritableSettingsAreReportedOnceAndPresentingStillWorks) {
    const std::pair<const char*, const char*> cases[] = {
        // The limit makes every write to a file fail half-way, as a full disk does.
        {"full disk", "trap '' XFSZ; ulimit -f 0; exec \"$0\""},
        {"no such folder can be made", "export XDG_CONFIG_HOME=/proc/none; exec \"$0\""},
    };
    const std::string old = "<plist version=\"1.0\"><dict><key>hideApps</key><true/></dict></plist>";
    for (const auto& [what, script] : cases) {
        SCOPED_TRACE(what);
        write(defaultsFile(), old);
        auto how = settings();
        how.wrapper = {"sh", "-c", script};
        auto tavro = launch(how);
        toggle(*tavro);
        toggle(*tavro);
        quit(tavro);
        // libpulse has a word of its own on the limit.
        EXPECT_EQ(occurrences(complaints(*tavro), "tavropro: "), 2) << complaints(*tavro);
        EXPECT_EQ(occurrences(complaints(*tavro), "cannot be written"), 1) << complaints(*tavro);
        EXPECT_EQ(occurrences(complaints(*tavro), "Failed to enable launch at login: "), 1)
            << complaints(*tavro);
        EXPECT_EQ(defaults(), old);
        EXPECT_EQ(filesBelow(config.path()), 1) << "a remnant is left";
    }
}

TEST_F(Faults, OfHundredsOfWindowsSomeMayCloseDuringASwitch) {
    auto tavro = launch();
    for (int round = 1; round <= 10; ++round) {
        SCOPED_TRACE(round);
        ASSERT_TRUE(server.eventually("the session's windows alone",
                                      [this] { return server.applicationWindows().size() == 3; }));
        ClientApplication dying(server, "Alpha"), kept(server, "Beta");
        auto windows = dying.addWindows(round == 1 ? 200 : 24);
        const auto front = kept.addWindow({700, 600, 300, 200});
        auto stacking = server.applicationWindows();
        for (const auto* line : {turnedOn, turnedOff}) {
            SCOPED_TRACE(line);
            clickItem(Input::Button::middle);
            // The program says so first and asks for the windows next: one after the other dies meanwhile, at
            // another pace in each round.
            ASSERT_TRUE(tavro->waitForLine(line, round));
            for (auto left = windows.size() / 2; windows.size() > left; windows.pop_back()) {
                dying.destroy(windows.back());
                std::erase(stacking, windows.back());
                for (int pause = 0; pause < round; ++pause)
                    server.active();
            }
            const bool isOn = line == turnedOn;
            if (isOn)
                ASSERT_TRUE(server.eventually("the windows that live minimised", [&] {
                    return server.active() == front && areMinimised(windows);
                }));
            else
                ASSERT_TRUE(isRestored(stacking, front));
            parkPointer();
            waitForTray(isOn);
        }
    }
    quit(tavro);
    EXPECT_EQ(complaints(*tavro), "");
}

TEST_F(Faults, CoversGoAboveTheIconsOfARestartedDesktop) {
    auto tavro = launch();
    toggle(*tavro);
    ASSERT_TRUE(everyScreenIsCovered());
    killIconDesktop();
    startIconDesktop();
    EXPECT_TRUE(server.eventually("the icon window at the bottom",
                                  [this] { return server.clients().front() == iconWindow(); }));
    EXPECT_TRUE(everyScreenIsCovered());
    toggle(*tavro);
    EXPECT_TRUE(everyIconShows()); // which it would not if the new window had drawn none yet
    quit(tavro);
}

TEST_F(Faults, CoversShowTheWallpaperFileWhenTheDesktopPublishesNoPicture) {
    const Rect lower{0, 500, 1240, 500}; // no window of the session's stands there but the slides
    for (const bool isStale : {true, false}) {
        SCOPED_TRACE(isStale ? "stale" : "absent");
        const auto wallpaper = server.wallpaper(lower);
        ASSERT_FALSE(wallpaper.empty());
        killIconDesktop();
        ASSERT_TRUE(isStale || Session::run("xprop -root -remove _XROOTPMAP_ID"));
        ASSERT_TRUE(server.wallpaper(lower).empty());
        auto tavro = launch();
        toggle(*tavro);
        EXPECT_TRUE(server.eventually("a cover on every screen",
                                      [&] { return covers(*tavro).size() == server.screens().size(); }));
        EXPECT_TRUE(server.eventually("the wallpaper's file on the first screen",
                                      [&] { return server.screenshot(lower) == wallpaper; }));
        EXPECT_TRUE(server.eventually("a picture on the second screen", [this] {
            const auto pixels = server.screenshot({1920, 0, 1440, 900});
            return std::set<std::uint32_t>(pixels.begin(), pixels.end()).size() > 20;
        }));
        toggle(*tavro);
        quit(tavro);
        EXPECT_EQ(complaints(*tavro), "");
        startIconDesktop();
        EXPECT_TRUE(everyIconShows());
    }
}
