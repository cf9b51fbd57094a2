#pragma once

#include "ClientApplication.h"
#include "Input.h"
#include "Session.h"
#include "TavroProcess.h"
#include "Tray.h"
#include "XServer.h"
#include "support/Files.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

/// A test in the private desktop. Each one finds it, and has to leave it, as the session has started it.
class DesktopTest : public testing::Test {
protected:
    static constexpr auto turnedOn = "Turn On --------------";
    static constexpr auto turnedOff = "Turn Off --------------";

    void SetUp() override;
    void TearDown() override;

    TavroProcess::Launch settings() const { return {config.path(), {}, {}}; }
    std::filesystem::path defaultsFile() const { return config.path() / "com.vantrelo.TavroPRO.plist"; }
    /// The settings that the next launch finds, as entries of a property list.
    void writeDefaults(const std::string& entries) const {
        write(defaultsFile(), "<plist version=\"1.0\"><dict>" + entries + "</dict></plist>");
    }
    /// The same, and Control-Super-P switches presentation mode.
    void writeDefaultsWithShortcut(const std::string& entries) const;
    void pressShortcut() { input.type({Input::Key::control, Input::Key::super}, Input::Key::p); }
    std::string defaults() const { return contentsOf(defaultsFile()); }
    /// Whether the settings hold that flag with that value.
    bool defaultsHold(const std::string& flag, bool value) const;
    /// Starts the program and returns when the tray shows its item, and the popover that shows at first is
    /// closed.
    std::unique_ptr<TavroProcess> launch() { return launch(settings()); }
    std::unique_ptr<TavroProcess> launch(const TavroProcess::Launch& how);
    /// None while it does not show.
    xcb_window_t popover(const TavroProcess& tavro) const;
    testing::AssertionResult showsPopover(const TavroProcess& tavro);
    testing::AssertionResult showsNoPopover(const TavroProcess& tavro, xcb_window_t front);
    /// By Escape, and returns when the window that was in front before is so again.
    void closePopover(const TavroProcess& tavro, xcb_window_t front);
    /// Ends the program and returns when its item is gone.
    void quit(std::unique_ptr<TavroProcess>& tavro);
    /// The middle click on the item; returns when the program has switched.
    void toggle(TavroProcess& tavro);
    /// What the program has written on standard error, besides that there is no notification server: having
    /// presented in a session without one, it must have said so once.
    static std::string complaints(TavroProcess& tavro);
    void clickItem(Input::Button button);
    /// By the first entry of the item's menu, which the panel draws; returns when it has closed.
    void openPreferences();
    /// Escape, until no menu is open: one that has just opened may not have the keyboard yet.
    testing::AssertionResult closeMenu();
    /// Until the tray shows the item, with the microphone's button or without, and takes clicks on it.
    void waitForTray(bool hasButton);
    /// The pointer away from everything that would change its looks under it: panels, too, have tool tips.
    void parkPointer() { input.moveTo({960, 1030}); }

    /// Those of the program that the window manager manages.
    std::vector<xcb_window_t> windows(const TavroProcess& tavro) const;
    /// Its windows among the desktop's icons, and below all windows where there is no desktop.
    std::vector<xcb_window_t> covers(const TavroProcess& tavro) const;
    xcb_window_t iconWindow() const;
    bool areMinimised(const std::vector<xcb_window_t>& windows) const;
    /// The application windows that do not belong to the class.
    std::vector<xcb_window_t> windowsBesides(const std::string& windowClass) const;
    bool isMarked(xcb_window_t window) const { return !server.values(window, "_TAVROPRO_HIDDEN").empty(); }
    /// Waits until all applications are hidden but the one that is in front at first.
    testing::AssertionResult othersAreHidden() {
        return server.eventually("the other applications minimised",
                                 [this] { return areMinimised(windowsBesides("Chat")); });
    }
    /// Whether every screen shows nothing but its own wallpaper and what stands above covers.
    bool isCovered() const;
    testing::AssertionResult everyScreenIsCovered() {
        return server.eventually("the bare wallpaper on every screen", [this] { return isCovered(); });
    }
    testing::AssertionResult everyIconShows();
    /// Waits for the stacking order, with nothing hidden, and the focus.
    testing::AssertionResult isRestored(const std::vector<xcb_window_t>& stacking, xcb_window_t active);
    /// As the test has found it.
    testing::AssertionResult isRestored() { return isRestored(m_stackingAtStart, m_activeAtStart); }

    XServer server;
    Input input{server};
    Tray tray{server};
    TemporaryFolder config;

private:
    bool isOf(const TavroProcess& tavro, xcb_window_t window) const;
    bool isDesktop(xcb_window_t window) const;

    std::vector<xcb_window_t> m_stackingAtStart;
    xcb_window_t m_activeAtStart = XCB_NONE;
};
