#include "support/desktop/DesktopTest.h"
#include "support/desktop/Matrix.h"
#include "support/desktop/Pictures.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <unistd.h>

// One scenario for every desktop of tools/desktop-session, of which each check is a cell of the table in
// README.md. The session starts bare; the first thing taken is a picture of its wallpapers, and only then
// come files and windows.

namespace {

struct Desktop {
    std::string name;
    /// The piece of the session that is the window manager and nothing else; none where there is no such one.
    const char* windowManager;
    bool hasFiles = true;
    /// By how much, of 255, the wallpaper may differ: a graphics card's rounding cannot be repeated.
    int rounding = 0;
    /// That its tray takes for the choice of an item.
    int clicks = 1;
};

const Desktop& desktop() {
    static const Desktop all[] = {
        {"xfce", "xfwm4"},         {"mate", "marco"},     {"gnome", nullptr, true, 3, 2},
        {"flashback", "metacity"}, {"cinnamon", nullptr}, {"kde", "kwin"},
        {"lxde", "openbox"},       {"lxqt", "openbox"},   {"i3", "i3", false},
    };
    static const auto& found = *std::ranges::find(all, Matrix::desktop(), &Desktop::name);
    return found;
}

/// What is the same for all tests: how the desktop looks by itself, and the applications on it.
struct Scene {
    Matrix matrix{""};
    Pixels wallpapers, files;
    /// The pixels of files.
    std::vector<std::size_t> drawn;
    std::vector<std::unique_ptr<ChildProcess>> applications;
    /// As they were opened. The last one is in front.
    xcb_window_t slides, notes, palette, mail, chat;
};

} // namespace

class Desktops : public DesktopTest {
protected:
    static std::unique_ptr<Scene> scene;

    void SetUp() override {
        ASSERT_TRUE(Session::isPrivate());
        write(home / "com.vantrelo.TavroPRO.plist", R"(<plist version="1.0"><dict>
            <key>KeyboardShortcuts_tavroGlobalShortcut</key>
            <string>{"carbonKeyCode":35,"carbonModifiers":4352}</string></dict></plist>)");
        parkPointer();
        if (!scene)
            arrange();
        bringBack();
    }
    void TearDown() override {
        if (tavro) {
            tavro->signal(SIGTERM);
            tavro->end();
        }
        server.showDesktop(false);
        closeNotifications();
    }
    static void TearDownTestSuite() { scene.reset(); }

    // --- The scene ---------------------------------------------------------------------------------

    void arrange() {
        scene = std::make_unique<Scene>();
        scene->wallpapers = stillPicture(server);
        scene->matrix.picture("wallpapers");
        if (desktop().hasFiles)
            putFiles();
        scene->slides = open("Slides", "slides", "1040x680+560+150");
        scene->notes = open("Notes", "editor", "720x500+2240+160");
        scene->palette = open("Palette", "chat", "300x300+2000+560");
        scene->mail = open("Mail", "editor", "500x400+900+300");
        scene->chat = open("Chat", "chat", "600x420+1240+580");
        if (hidesOthersByMinimising()) {
            server.minimise(scene->mail);
            ASSERT_TRUE(
                server.eventually("the user's window minimised", [&] { return isHidden(scene->mail); }));
        }
        ASSERT_TRUE(Session::run("wmctrl -i -r " + std::to_string(scene->palette) + " -b add,skip_taskbar"));
    }
    void putFiles() {
        const std::string folder = std::getenv("HOME") + std::string("/Desktop/");
        for (const auto* name :
             {"Budget.ods", "Ideas.txt", "Invoice.pdf", "Quarterly report.odt", "Talk.odp"})
            write(folder + name, name);
        ASSERT_TRUE(server.eventually("files on the desktop", [&] {
            scene->files = stillPicture(server);
            scene->drawn = differences(scene->files, scene->wallpapers);
            return scene->drawn.size() > 5000;
        }));
    }
    xcb_window_t open(const std::string& name, const std::string& kind, const std::string& geometry) {
        const std::vector<std::string> command{Session::variable("TAVRO_SAMPLE_WINDOW"),
                                               "--class",
                                               name,
                                               "--title",
                                               name,
                                               "--kind",
                                               kind,
                                               "--geometry",
                                               geometry};
        scene->applications.push_back(std::make_unique<ChildProcess>(command, STDOUT_FILENO, STDERR_FILENO));
        xcb_window_t window = XCB_NONE;
        EXPECT_TRUE(server.eventually("the window of " + name, [&] {
            for (const auto each : server.clients())
                if (server.text(each, "WM_CLASS").starts_with(name + '\0'))
                    window = each;
            return window != XCB_NONE && server.isViewable(window);
        }));
        return window;
    }
    /// Whatever a test before has left, so that each cell speaks for itself.
    void bringBack() {
        for (const auto window : {scene->slides, scene->notes, scene->palette, scene->chat})
            EXPECT_TRUE(comesToTheFront(window)) << server.text(window, "WM_CLASS");
        stacking = visibleWindows();
        places = placesOf(stacking);
        looks = stillPicture(server);
    }

    /// Asks again now and then: window managers lose a request while they are at the one before.
    testing::AssertionResult comesToTheFront(xcb_window_t window) {
        int looks = 0;
        return server.eventually("a window in front", [&] {
            if (isActive(window) && !isHidden(window))
                return true;
            if (looks++ % 50 == 0)
                server.activate(window);
            return false;
        });
    }

    // --- What the server knows ---------------------------------------------------------------------

    /// Where the pixels differ, on the screens but not on panels and windows, nor in their shadows.
    std::vector<std::size_t> differences(const Pixels& one, const Pixels& other) const {
        constexpr int shadow = 64;
        const auto area = wholeArea(server);
        const auto screens = server.screens();
        std::vector<Rect> covered{panel()};
        for (const auto window : server.applicationWindows())
            if (server.isViewable(window) && !server.isMinimised(window)) {
                const auto place = server.place(server.frame(window));
                covered.push_back({place.x - shadow, place.y - shadow, place.width + 2 * shadow,
                                   place.height + 2 * shadow});
            }
        const auto holds = [](const std::vector<Rect>& rects, Point point) {
            return std::ranges::any_of(rects, [point](const Rect& rect) { return rect.contains(point); });
        };
        std::vector<std::size_t> found;
        for (std::size_t i = 0; i < one.size(); ++i) {
            const auto at = static_cast<int>(i);
            const Point point{at % area.width, at / area.width};
            if (differ(one[i], other[i], desktop().rounding) && holds(screens, point) &&
                !holds(covered, point))
                found.push_back(i);
        }
        return found;
    }
    /// What the first screen's panel leaves to nobody else.
    Rect panel() const {
        const auto screen = server.screens().front();
        const auto area = server.values(server.root(), "_NET_WORKAREA");
        const auto top = area.size() < 4 ? 0 : static_cast<int>(area[1]);
        const auto bottom = area.size() < 4 ? 1061 : top + static_cast<int>(area[3]);
        if (top > 0)
            return {screen.x, screen.y, screen.width, top};
        return {screen.x, bottom, screen.width, screen.y + screen.height - bottom};
    }
    bool isHidden(xcb_window_t window) const {
        return server.isMinimised(window) || !server.isViewable(window);
    }
    /// Most of it looks as it did before: it may also be made invisible in its place.
    bool isInSight(xcb_window_t window) const {
        const auto whole = wholeArea(server);
        const auto now = server.screenshot(whole);
        const auto place = server.place(window);
        int same = 0;
        for (int y = place.y; y < place.y + place.height; ++y)
            for (int x = place.x; x < place.x + place.width; ++x)
                if (const auto i = static_cast<std::size_t>(y) * static_cast<std::size_t>(whole.width) +
                                   static_cast<std::size_t>(x);
                    whole.contains({x, y}))
                    same += now[i] == looks[i];
        return !isHidden(window) && same > place.width * place.height / 2;
    }
    bool isActive(xcb_window_t window) const {
        const auto active = server.values(server.root(), "_NET_ACTIVE_WINDOW");
        return !active.empty() && active.front() == window;
    }
    static bool hidesOthersByMinimising() { return desktop().name != "i3"; }
    std::vector<xcb_window_t> visibleWindows() const {
        auto windows = server.applicationWindows();
        std::erase_if(windows, [this](auto window) { return isHidden(window); });
        return windows;
    }
    std::vector<Rect> placesOf(const std::vector<xcb_window_t>& windows) const {
        std::vector<Rect> found;
        found.reserve(windows.size());
        for (const auto window : windows)
            found.push_back(server.place(window));
        return found;
    }

    /// Each with its name, workspace and states.
    std::string describe(const std::vector<xcb_window_t>& windows) const {
        std::string text;
        for (const auto window : windows)
            text += server.text(window, "WM_NAME") + " on " +
                    testing::PrintToString(server.values(window, "_NET_WM_DESKTOP")) + " " +
                    testing::PrintToString(server.values(window, "_NET_WM_STATE")) + "; ";
        return text;
    }

    // --- What is promised --------------------------------------------------------------------------

    /// Ten looks in a row, since what goes wrong may do so some time after the cause.
    testing::AssertionResult steadily(const std::string& what, const std::function<bool()>& condition) {
        int looks = 0;
        return server.eventually(what, [&] {
            looks = condition() ? looks + 1 : 0;
            return looks == 10;
        });
    }
    std::size_t fileOfPixelsShown() const {
        const auto shown = server.screenshot(wholeArea(server));
        return static_cast<std::size_t>(
            std::ranges::count_if(scene->drawn, [&](auto i) { return shown[i] == scene->files[i]; }));
    }
    testing::AssertionResult filesAreCovered() {
        return steadily("no file to be seen",
                        [this] { return fileOfPixelsShown() < scene->drawn.size() / 50; });
    }
    testing::AssertionResult filesAreCoveredAfter(const std::vector<std::function<void()>>& steps) {
        auto result = testing::AssertionSuccess();
        for (const auto& step : steps) {
            step();
            if (result)
                result = filesAreCovered();
        }
        return result;
    }
    testing::AssertionResult filesShow() {
        return server.eventually("the files",
                                 [this] { return fileOfPixelsShown() > scene->drawn.size() / 10 * 9; });
    }
    testing::AssertionResult showsWallpapersAlone() {
        std::size_t different = 0;
        auto result = server.eventually("the bare wallpapers", [&] {
            different = differences(server.screenshot(wholeArea(server)), scene->wallpapers).size();
            return different == 0;
        });
        return result << "; pixels that differ: " << different;
    }
    testing::AssertionResult othersAreHidden() {
        return steadily("all hidden but the front window", [this] {
            return !isInSight(scene->slides) && !isInSight(scene->notes) && isInSight(scene->chat);
        });
    }
    testing::AssertionResult everythingIsBack() {
        auto result = server.eventually("the windows in their order and places, and the focus", [this] {
            return visibleWindows() == stacking && placesOf(stacking) == places && isActive(scene->chat);
        });
        return result << ": " << testing::PrintToString(stacking) << " at " << testing::PrintToString(places)
                      << ", now " << testing::PrintToString(visibleWindows()) << " at "
                      << testing::PrintToString(placesOf(visibleWindows()));
    }

    // --- What the user does ------------------------------------------------------------------------

    void start() {
        tavro = std::make_unique<TavroProcess>(TavroProcess::Launch{home, {}, {}});
        ASSERT_TRUE(opens("at launch"));
        ASSERT_TRUE(closes());
    }
    testing::AssertionResult opens(const std::string& when) {
        return server.eventually("the popover " + when, [this] { return popover(*tavro) != XCB_NONE; });
    }
    /// By Escape, for which it may first have to be given the keyboard.
    testing::AssertionResult closes() {
        int looks = 0;
        const auto isGone = server.eventually("no popover", [&] {
            const auto window = popover(*tavro);
            if (window == XCB_NONE)
                return true;
            if (isActive(window))
                input.type(Input::Key::escape);
            else if (++looks % 50 == 0)
                server.activate(window);
            return false;
        });
        return isGone ? comesToTheFront(scene->chat) : isGone;
    }
    testing::AssertionResult press(const char* line) {
        const auto before = tavro->linesOfOutput(line);
        input.type({Input::Key::control, Input::Key::super}, Input::Key::p);
        return server.eventually("a line of the switch",
                                 [&] { return tavro->linesOfOutput(line) == before + 1; });
    }
    void present() {
        start();
        ASSERT_TRUE(press(turnedOn));
    }
    /// Asks the notification server something that it answers after what it was sent before.
    static bool answersNotifications() {
        return Session::run("dbus-send --session --print-reply --reply-timeout=30000 "
                            "--dest=org.freedesktop.Notifications /org/freedesktop/Notifications "
                            "org.freedesktop.Notifications.GetCapabilities >/dev/null");
    }
    /// No two of them alike, of which some servers take no more.
    bool notify() {
        static int count = 0;
        return Session::run("notify-send --expire-time=60000 'Anna - Chat' 'Message " +
                            std::to_string(++count) + "'");
    }
    /// Panels may count what they were sent.
    Rect bubbleSince(const Pixels& before) const { return changed(server, before, panel(), false); }
    /// After how many answers of the server a bubble is there. It is gone afterwards.
    testing::AssertionResult showsNotification(int& questions) {
        constexpr int smallest = 100;
        const auto before = stillPicture(server);
        EXPECT_TRUE(notify());
        const auto shows = server.eventually("a bubble", [&] {
            ++questions;
            return answersNotifications() && bubbleSince(before).width >= smallest;
        });
        closeNotifications();
        EXPECT_TRUE(server.eventually("no bubble", [&] { return bubbleSince(before).width < smallest; }));
        return shows;
    }
    /// Looks for three times as long as one took to show: at the pixels, which are what an audience sees.
    testing::AssertionResult showsNoNotification(int questions) {
        const auto before = stillPicture(server);
        EXPECT_TRUE(notify());
        for (int look = 0; look < 3 * questions + 30; ++look) {
            EXPECT_TRUE(answersNotifications());
            if (const auto bubble = bubbleSince(before); bubble.width > 0)
                return testing::AssertionFailure() << "something shows at " << testing::PrintToString(bubble);
        }
        return testing::AssertionSuccess();
    }
    void showDesktop(bool shows) {
        server.showDesktop(shows);
        EXPECT_TRUE(server.eventually("the effect", [&] {
            return server.values(server.root(), "_NET_SHOWING_DESKTOP") == std::vector{shows ? 1u : 0u};
        }));
    }
    void goTo(std::uint32_t workspace) {
        server.switchWorkspace(workspace);
        EXPECT_TRUE(server.eventually("the workspace", [&] { return server.workspace() == workspace; }));
    }
    static void closeNotifications() {
        Session::run(R"(for id in $(seq 30); do
            dbus-send --session --print-reply --dest=org.freedesktop.Notifications /org/freedesktop/Notifications \
                org.freedesktop.Notifications.CloseNotification uint32:$id
        done >/dev/null 2>&1)");
    }

    /// The session's own settings, where the program finds those of the desktop, too.
    const std::filesystem::path home = std::getenv("XDG_CONFIG_HOME");
    std::unique_ptr<TavroProcess> tavro;
    /// Those that are visible without a presentation.
    std::vector<xcb_window_t> stacking;
    std::vector<Rect> places;
    Pixels looks;
};

std::unique_ptr<Scene> Desktops::scene;

TEST_F(Desktops, Tray) {
    const auto strip = panel();
    const auto isBeside = [&](const std::string& when) {
        Rect place;
        auto result = server.eventually("the popover beside the panel, " + when, [&] {
            constexpr int gap = 8;
            place = popover(*tavro) == XCB_NONE ? Rect() : server.place(popover(*tavro));
            const auto screen = server.screens().front();
            const auto distance = strip.y == 0 ? place.y - strip.height : strip.y - place.y - place.height;
            return place.width > 0 && place.x >= screen.x &&
                   place.x + place.width <= screen.x + screen.width && distance >= 0 && distance <= gap;
        });
        return result << ", panel " << testing::PrintToString(strip) << ", popover "
                      << testing::PrintToString(place);
    };
    const auto bare = stillPicture(server);
    tavro = std::make_unique<TavroProcess>(TavroProcess::Launch{home, {}, {}});
    scene->matrix.check("popover beside the panel at launch", isBeside("at launch"));
    scene->matrix.check("popover has the keyboard at launch", server.eventually("the keyboard", [this] {
        return popover(*tavro) != XCB_NONE && isActive(popover(*tavro));
    }));
    ASSERT_TRUE(closes());
    // Away from taskbars and the clock.
    const Rect end{strip.x + strip.width / 4 * 3, strip.y, strip.width / 4, strip.height};
    Rect item;
    scene->matrix.check("item in the tray", server.eventually("something new in the panel's right end",
                                                              [&] {
                                                                  constexpr int smallest = 10;
                                                                  item = changed(server, bare, end, true);
                                                                  return item.width >= smallest &&
                                                                         item.height >= smallest;
                                                              })
                                                << ": " << testing::PrintToString(item));
    // Panels lose clicks until they have asked an item for its menu.
    int looks = 0;
    EXPECT_TRUE(server.eventually("the popover", [&] {
        if (popover(*tavro) == XCB_NONE && looks++ % 100 == 0) {
            parkPointer();
            for (int click = 0; click < desktop().clicks; ++click)
                input.click({item.x + std::min(14, item.width / 2), strip.y + strip.height / 2},
                            Input::Button::left);
        }
        return popover(*tavro) != XCB_NONE;
    })) << testing::PrintToString(item);
    scene->matrix.check("popover beside the panel after a click", isBeside("after a click"));
    EXPECT_TRUE(closes());
}

TEST_F(Desktops, Covers) {
    const std::string click = "files covered after a click",
                      menu = "files covered after a right click and Escape",
                      order = "all back in their order after all that",
                      shown = "files covered after \"show desktop\"",
                      workspace = "files covered after another workspace";
    const Point bareSpot{400, 700};
    scene->matrix.picture("before");
    start();
    scene->matrix.check("the shortcut", press(turnedOn));
    scene->matrix.check("wallpapers alone", showsWallpapersAlone(),
                        desktop().rounding ? "yes, to " + std::to_string(desktop().rounding) + " of 255"
                                           : "yes");
    scene->matrix.picture("presenting");
    if (!desktop().hasFiles) {
        for (const std::string& each :
             {std::string("files covered"), click, menu, shown, workspace, std::string("files back"), order})
            scene->matrix.note(each, "no files");
        return;
    }
    scene->matrix.check("files covered", filesAreCovered());
    input.click(bareSpot, Input::Button::left);
    scene->matrix.check(click, filesAreCovered());
    scene->matrix.picture("click");
    input.click(bareSpot, Input::Button::right);
    EXPECT_TRUE(server.eventually("a menu", [this] { return !server.menus().empty(); }));
    EXPECT_TRUE(closeMenu());
    scene->matrix.check(menu, filesAreCovered());
    scene->matrix.check(
        shown, filesAreCoveredAfter({[this] { showDesktop(true); }, [this] { showDesktop(false); }}));
    if (server.values(server.root(), "_NET_NUMBER_OF_DESKTOPS") == std::vector{1u})
        scene->matrix.note(workspace, "one workspace");
    else
        scene->matrix.check(workspace, filesAreCoveredAfter({[this] { goTo(1); }, [this] { goTo(0); }}));
    EXPECT_TRUE(press(turnedOff));
    scene->matrix.check("files back", filesShow());
    scene->matrix.check(order, server.eventually("the order", [this] { return visibleWindows() == stacking; })
                                   << ": " << describe(server.applicationWindows()) << tavro->errors());
    stillPicture(server);
    scene->matrix.picture("after");
}

TEST_F(Desktops, Windows) {
    const std::string minimised = "a window that the user had minimised stays so",
                      palette = "a palette is hidden and comes back";
    present();
    scene->matrix.check("others hidden", othersAreHidden());
    scene->matrix.check("front window stays", steadily("the front window", [this] {
                            return isActive(scene->chat) &&
                                   (!hidesOthersByMinimising() || server.place(scene->chat) == places.back());
                        }));
    const auto wasHidden =
        server.eventually("the palette out of sight", [this] { return !isInSight(scene->palette); });
    EXPECT_TRUE(press(turnedOff));
    scene->matrix.check("all back in their order, with the focus", everythingIsBack());
    scene->matrix.check(
        palette, wasHidden ? server.eventually("the palette", [this] { return isInSight(scene->palette); })
                           : wasHidden);
    if (hidesOthersByMinimising())
        scene->matrix.check(minimised, steadily("the mail hidden", [this] { return isHidden(scene->mail); }));
    else
        scene->matrix.note(minimised, "no minimising");
}

TEST_F(Desktops, Notifications) {
    int questions = 0;
    scene->matrix.check("a notification shows before", showsNotification(questions));
    present();
    EXPECT_TRUE(othersAreHidden());
    EXPECT_TRUE(showsWallpapersAlone()); // which may come some time after the covers
    scene->matrix.check("no notification while presenting", showsNoNotification(questions));
    EXPECT_TRUE(press(turnedOff));
    closeNotifications();
    scene->matrix.check("a notification shows again afterwards", showsNotification(questions));
}

TEST_F(Desktops, Killed) {
    present();
    EXPECT_TRUE(othersAreHidden());
    tavro->signal(SIGKILL);
    EXPECT_EQ(tavro->end(), "killed by signal 9");
    start();
    scene->matrix.check("windows back after a crash", everythingIsBack());
    if (desktop().hasFiles)
        scene->matrix.check("files back after a crash", filesShow());
    else
        scene->matrix.note("files back after a crash", "no files");
    int questions = 0;
    closeNotifications();
    scene->matrix.check("notifications back after a crash", showsNotification(questions));
}

// The last one: files may find another place after it.
TEST_F(Desktops, WindowManagerRestarts) {
    const std::string files = "files covered after the window manager's restart",
                      others = "others hidden after the window manager's restart";
    const auto* manager = desktop().windowManager;
    if (!manager) {
        scene->matrix.note(files, "one with the shell");
        scene->matrix.note(others, "one with the shell");
        return;
    }
    present();
    EXPECT_TRUE(othersAreHidden());
    Session::signal(manager, SIGTERM);
    EXPECT_TRUE(waitForEnd(Session::pid(manager)));
    EXPECT_TRUE(
        Session::run("xprop -root -remove _NET_SUPPORTING_WM_CHECK -remove _NET_CLIENT_LIST_STACKING"));
    Session::start(manager);
    EXPECT_TRUE(server.eventually("the next window manager, with the front window", [&] {
        return !server.values(server.root(), "_NET_SUPPORTING_WM_CHECK").empty() &&
               std::ranges::count(server.clients(), scene->chat) == 1;
    }));
    if (desktop().hasFiles)
        scene->matrix.check(files, showsWallpapersAlone());
    else
        scene->matrix.note(files, "no files");
    scene->matrix.check(others, othersAreHidden());
}
