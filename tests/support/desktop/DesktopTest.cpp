#include "DesktopTest.h"

#include <algorithm>
#include <csignal>
#include <regex>

void DesktopTest::SetUp() {
    ASSERT_TRUE(Session::isPrivate())
        << "to be run by tools/desktop-session, which keeps real desktops out of it";
    parkPointer();
    ASSERT_TRUE(server.eventually("a focus", [this] { return server.active() != XCB_NONE; }));
    m_stackingAtStart = server.applicationWindows();
    m_activeAtStart = server.active();
}

void DesktopTest::TearDown() {
    if (!Session::isPrivate())
        return;
    input.type(Input::Key::escape); // a menu that a failed test left open would swallow the next one's clicks
    server.showDesktop(false);
    if (server.workspace() != 0)
        server.switchWorkspace(0);
    parkPointer();
    EXPECT_TRUE(isRestored());
    for (const auto window : server.clients())
        EXPECT_FALSE(isMarked(window)) << "a mark is left on a window";
}

void DesktopTest::writeDefaultsWithShortcut(const std::string& entries) const {
    writeDefaults(R"(<key>KeyboardShortcuts_tavroGlobalShortcut</key>
        <string>{"carbonKeyCode":35,"carbonModifiers":4352}</string>)" +
                  entries);
}

bool DesktopTest::defaultsHold(const std::string& flag, bool value) const {
    return std::regex_search(defaults(),
                             std::regex("<key>" + flag + "</key>\\s*<" + (value ? "true" : "false") + "/>"));
}

std::unique_ptr<TavroProcess> DesktopTest::launch(const TavroProcess::Launch& how) {
    EXPECT_TRUE(server.eventually("an empty tray before the launch", [this] { return tray.isEmpty(); }));
    const auto front = server.active();
    auto tavro = std::make_unique<TavroProcess>(how);
    waitForTray(false);
    closePopover(*tavro, front);
    return tavro;
}

// Having drawn an item, the panel asks the program a few more things, and until then may lose a click. A
// question to the program and one to the panel, each answered in its turn, mark the end of one of those
// steps.
void DesktopTest::waitForTray(bool hasButton) {
    EXPECT_TRUE(server.eventually(hasButton ? "the item and the button" : "the item alone",
                                  [&] { return hasButton ? tray.showsItemAndButton() : tray.showsItem(); }));
    EXPECT_TRUE(Session::run(R"(
        get() {
            dbus-send --session --print-reply --reply-timeout=30000 --dest="$1" "$2" \
                org.freedesktop.DBus.Properties.Get "string:org.kde.$3" "string:$4"
        }
        watcher() { get org.kde.StatusNotifierWatcher /StatusNotifierWatcher StatusNotifierWatcher "$1"; }
        items=$(watcher RegisteredStatusNotifierItems | sed -n 's|.*string "\([^/"]*\).*|\1|p')
        for step in 1 2 3 4 5; do
            for item in $items; do
                get "$item" /StatusNotifierItem StatusNotifierItem Id || true # one may be about to go
            done
            watcher IsStatusNotifierHostRegistered || exit 1
        done >/dev/null)"));
}

xcb_window_t DesktopTest::popover(const TavroProcess& tavro) const {
    for (const auto window : windows(tavro))
        if (server.has(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_UTILITY"))
            return window;
    return XCB_NONE;
}

testing::AssertionResult DesktopTest::showsPopover(const TavroProcess& tavro) {
    return server.eventually("the popover with the focus", [&] {
        const auto window = popover(tavro);
        return window != XCB_NONE && server.active() == window && server.focus() == window;
    });
}

testing::AssertionResult DesktopTest::showsNoPopover(const TavroProcess& tavro, xcb_window_t front) {
    auto result = server.eventually("the end of the popover, and the window in front",
                                    [&] { return popover(tavro) == XCB_NONE && server.active() == front; });
    return result << "; popover " << popover(tavro) << ", active " << server.active() << " \""
                  << server.text(server.active(), "WM_CLASS").c_str() << "\" in place of " << front;
}

void DesktopTest::closePopover(const TavroProcess& tavro, xcb_window_t front) {
    EXPECT_TRUE(showsPopover(tavro));
    input.type(Input::Key::escape);
    EXPECT_TRUE(showsNoPopover(tavro, front));
}

void DesktopTest::quit(std::unique_ptr<TavroProcess>& tavro) {
    tavro->signal(SIGTERM);
    EXPECT_EQ(tavro->end(), "exited with 0");
    EXPECT_TRUE(server.eventually("an empty tray after the end", [this] { return tray.isEmpty(); }));
}

void DesktopTest::toggle(TavroProcess& tavro) {
    const auto switches = [&] { return tavro.linesOfOutput(turnedOn) + tavro.linesOfOutput(turnedOff); };
    const auto before = switches();
    clickItem(Input::Button::middle);
    EXPECT_TRUE(server.eventually("a line of the switch", [&] { return switches() == before + 1; }));
    parkPointer(); // not sooner: the panel takes no click from a pointer that has left again
    waitForTray(tavro.linesOfOutput(turnedOn) > tavro.linesOfOutput(turnedOff));
}

std::string DesktopTest::complaints(TavroProcess& tavro) {
    const std::string line =
        "tavropro: Do Not Disturb cannot be switched: no notification server is running\n";
    auto errors = tavro.errors();
    const auto at = errors.find(line);
    EXPECT_NE(at, std::string::npos) << errors;
    if (at != std::string::npos)
        errors.erase(at, line.size());
    EXPECT_EQ(errors.find(line), std::string::npos);
    return errors;
}

void DesktopTest::clickItem(Input::Button button) {
    input.click(tray.itemPlace(), button);
}

void DesktopTest::openPreferences() {
    clickItem(Input::Button::right);
    ASSERT_TRUE(server.eventually("the menu", [this] { return !server.menus().empty(); }));
    const auto menu = server.place(server.menus().front());
    constexpr int middleOfFirst = 12;
    input.click({menu.x + menu.width / 2, menu.y + middleOfFirst}, Input::Button::left);
    EXPECT_TRUE(server.eventually("the end of the menu", [this] { return server.menus().empty(); }));
    parkPointer();
}

testing::AssertionResult DesktopTest::closeMenu() {
    return server.eventually("no menu", [this] {
        if (server.menus().empty())
            return true;
        input.type(Input::Key::escape);
        return false;
    });
}

bool DesktopTest::isOf(const TavroProcess& tavro, xcb_window_t window) const {
    return server.values(window, "_NET_WM_PID") == std::vector{static_cast<std::uint32_t>(tavro.pid())};
}

bool DesktopTest::isDesktop(xcb_window_t window) const {
    return server.has(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DESKTOP");
}

std::vector<xcb_window_t> DesktopTest::windows(const TavroProcess& tavro) const {
    auto found = server.clients();
    std::erase_if(found, [&](auto window) { return isDesktop(window) || !isOf(tavro, window); });
    return found;
}

std::vector<xcb_window_t> DesktopTest::covers(const TavroProcess& tavro) const {
    std::vector<xcb_window_t> found;
    for (const auto window : server.clients())
        if (isDesktop(window)) {
            found.push_back(window);
            std::ranges::copy(server.children(window), std::back_inserter(found));
        }
    std::erase_if(found, [&](auto window) { return !isOf(tavro, window); });
    return found;
}

xcb_window_t DesktopTest::iconWindow() const {
    const auto all = server.clients();
    const auto found = std::ranges::find_if(
        all, [this](auto window) { return server.text(window, "WM_CLASS").starts_with("xfdesktop"); });
    return found == all.end() ? xcb_window_t{XCB_NONE} : *found;
}

bool DesktopTest::areMinimised(const std::vector<xcb_window_t>& windows) const {
    return std::ranges::all_of(windows, [this](auto window) { return server.isMinimised(window); });
}

std::vector<xcb_window_t> DesktopTest::windowsBesides(const std::string& windowClass) const {
    auto windows = server.applicationWindows();
    std::erase_if(windows, [&](auto window) {
        return server.text(window, "WM_CLASS").starts_with(windowClass + '\0');
    });
    return windows;
}

bool DesktopTest::isCovered() const {
    return std::ranges::all_of(
        server.screens(), [this](const auto& screen) { return server.pixelsBesidesWallpaper(screen) == 0; });
}

testing::AssertionResult DesktopTest::everyIconShows() {
    constexpr std::size_t pixelsOfOneIcon = 500;
    return server.eventually("icons on every screen", [this] {
        return std::ranges::all_of(server.screens(), [this](const auto& screen) {
            return server.pixelsBesidesWallpaper(screen) > pixelsOfOneIcon;
        });
    });
}

testing::AssertionResult DesktopTest::isRestored(const std::vector<xcb_window_t>& stacking,
                                                 xcb_window_t active) {
    const auto result = server.eventually("the former windows, stacking order and focus", [&] {
        return server.applicationWindows() == stacking && server.active() == active &&
               std::ranges::all_of(stacking, [this](auto window) {
                   return server.isViewable(window) && !server.isMinimised(window);
               });
    });
    return testing::AssertionResult(result)
           << ": " << testing::PrintToString(stacking) << " with " << active << " active, in place of "
           << testing::PrintToString(server.applicationWindows()) << " with " << server.active();
}
