#include "support/desktop/PreferencesTest.h"

#include <algorithm>
#include <csignal>

namespace fs = std::filesystem;

/// The preferences window: its recorders, and the file chooser of its button "Select...".
class Preferences : public PreferencesTest {
protected:
    void SetUp() override {
        DesktopTest::SetUp();
        ASSERT_TRUE(Session::run("convert -size 300x200 xc:#20A040 '" + picture.string() + "'"));
        ASSERT_TRUE(Session::run("convert -size 6000x4000 xc:#20A040 '" + photograph.string() + "'"));
        write(text, "no picture\n");
        writeDefaultsWithShortcut("<key>hideApps</key><false/><key>hideDesktop</key><false/>");
    }

    std::unique_ptr<TavroProcess> launchWithPreferences() {
        auto tavro = launch();
        openPreferences();
        EXPECT_TRUE(server.eventually("the preferences in front", [&] {
            return windows(*tavro).size() == 1 && windows(*tavro).front() == server.active();
        }));
        if (!windows(*tavro).empty())
            preferences = windows(*tavro).front();
        return tavro;
    }

    /// By a click in the field; returns when the program has dealt with that.
    void startRecording(Point place = recorder) {
        const auto corner = server.place(preferences);
        const Rect field{corner.x + 168, corner.y + 145, 130, 24};
        waitForTray(false); // a program that answers has drawn the end of what it recorded before
        const auto before = server.screenshot(field);
        clickInPreferences(place);
        EXPECT_TRUE(
            server.eventually("the field recording", [&] { return server.screenshot(field) != before; }));
        waitForTray(false);
        EXPECT_FALSE(server.grabKeyboard()) << "which it has for itself";
    }

    testing::AssertionResult stores(const std::string& record) {
        return server.eventually(record + " in the settings",
                                 [&] { return defaults().find(record) != std::string::npos; });
    }

    void openChooser(const TavroProcess& tavro) {
        clickInPreferences(selectButton);
        ASSERT_TRUE(server.eventually("the chooser with the focus", [&] {
            return chooser(tavro) != XCB_NONE && server.active() == chooser(tavro);
        }));
    }

    void choose(const TavroProcess& tavro, const fs::path& file) {
        openChooser(tavro);
        ASSERT_TRUE(Session::run("xdotool type --delay 1 '" + file.string() + "'"));
        // It comes some time after the last letter, and would then take the next click.
        EXPECT_TRUE(server.eventually("the proposal", [&] { return !server.menus().empty(); }));
        input.type(Key::enter);
        EXPECT_TRUE(noChooser(tavro));
    }

    testing::AssertionResult noChooser(const TavroProcess& tavro) {
        return server.eventually("the preferences alone, with the focus", [&] {
            return windows(tavro) == std::vector{preferences} && server.active() == preferences &&
                   server.menus().empty();
        });
    }

    std::uint32_t previewColour() const {
        const auto corner = server.place(preferences);
        return server.screenshot({corner.x + inPreview.x, corner.y + inPreview.y, 1, 1}).front();
    }

    testing::AssertionResult usesWallpaper(bool isUsed) {
        return server.eventually(isUsed ? "the flag" : "no flag",
                                 [&] { return defaultsHold("wallpaperFile", true) == isUsed; });
    }

    static fs::path storedFile() { return fs::path(std::getenv("HOME")) / "Documents" / "wallpaper.png"; }

    const fs::path picture = config.path() / "mine.png", text = config.path() / "text.png",
                   photograph = config.path() / "large.jpg";
    static constexpr std::uint32_t green = 0x20A040;
    // In the window, without the preview and with it.
    static constexpr Point clearButton{283, 157}, removeButton{258, 339}, inPreview{260, 300};
};

TEST_F(Preferences, AChosenPictureIsShownUntilItIsRemoved) {
    fs::remove(storedFile());
    auto tavro = launchWithPreferences();
    openChooser(*tavro);
    const auto dialog = server.place(chooser(*tavro)), screen = server.screens().front();
    EXPECT_TRUE(dialog.width >= 600 && dialog.height >= 400 && screen.contains({dialog.x, dialog.y}) &&
                screen.contains({dialog.x + dialog.width - 1, dialog.y + dialog.height - 1}))
        << dialog;
    const auto first = chooser(*tavro);
    ASSERT_TRUE(Session::run("xdotool windowmove " + std::to_string(first) + " 40 500"));
    ASSERT_TRUE(server.eventually("the chooser elsewhere", [&] { return server.place(first).x < 60; }));
    clickInPreferences(selectButton);
    EXPECT_TRUE(server.eventually("the same chooser with the focus",
                                  [&] { return chooser(*tavro) == first && server.active() == first; }));
    for (const auto* line : {turnedOn, turnedOff}) { // the program goes on behind it
        pressShortcut();
        EXPECT_TRUE(tavro->waitForLine(line, 1));
        waitForTray(line == turnedOn);
    }
    EXPECT_EQ(chooser(*tavro), first);
    input.type(Key::escape);
    EXPECT_TRUE(noChooser(*tavro));
    EXPECT_EQ(tavro->output().find("Not an image"), std::string::npos) << "cancelled";
    choose(*tavro, text);
    EXPECT_TRUE(tavro->waitForLine("Not an image: " + text.string(), 1));
    EXPECT_NE(previewColour(), green);
    EXPECT_FALSE(fs::exists(storedFile()));
    EXPECT_TRUE(usesWallpaper(false));
    choose(*tavro, picture);
    EXPECT_TRUE(tavro->waitForLine("File saved", 1));
    EXPECT_TRUE(server.eventually("the preview", [&] { return previewColour() == green; }));
    EXPECT_TRUE(fs::exists(storedFile()));
    EXPECT_TRUE(usesWallpaper(true));
    clickInPreferences(removeButton);
    EXPECT_TRUE(server.eventually("no preview", [&] { return previewColour() != green; }));
    EXPECT_TRUE(usesWallpaper(false));
    EXPECT_TRUE(fs::exists(storedFile()));
    parkPointer();
    choose(*tavro, photograph);
    quit(tavro); // while that is still being read
    EXPECT_TRUE(defaultsHold("wallpaperFile", true));
    EXPECT_EQ(tavro->linesOfOutput("File saved"), 2);
    EXPECT_EQ(tavro->linesOfOutput("Not an image: " + text.string()), 1);
}

// The recorder of the shortcut for presentation mode, with Control-Super-P in it.
TEST_F(Preferences, ARecorderSeesKeysThatOthersUse) {
    auto tavro = launchWithPreferences();
    startRecording();
    pressShortcut(); // our own, which rests
    EXPECT_TRUE(keyboardBecomesFree());
    startRecording();
    input.type(Key::a);               // no shortcut
    input.type({Key::super}, Key::e); // the desktop's, for its file manager
    ASSERT_TRUE(server.eventually(
        "an alert", [&] { return chooser(*tavro) != XCB_NONE && server.active() == chooser(*tavro); }));
    EXPECT_TRUE(keyboardBecomesFree());
    input.type(Key::enter);
    EXPECT_TRUE(noChooser(*tavro));
    waitForTray(false);
    EXPECT_FALSE(server.grabKeyboard()) << "it goes on recording";
    input.type({Key::control, Key::super}, Key::e);
    EXPECT_TRUE(stores(R"("carbonKeyCode":14,"carbonModifiers":4352)"));
    EXPECT_TRUE(keyboardBecomesFree());
    EXPECT_EQ(tavro->linesOfOutput(turnedOn), 0);
    EXPECT_EQ(server.applicationWindows().size(), 4u) << "and no file manager";

    pressShortcut();
    input.type({Key::control, Key::super}, Key::e);
    EXPECT_TRUE(tavro->waitForLine(turnedOn, 1));
    waitForTray(true);
    EXPECT_EQ(tavro->linesOfOutput(turnedOff), 0) << "by the former shortcut";
    toggle(*tavro);
    quit(tavro);
}

// What it must know of the desktop's settings it has asked for before.
TEST_F(Preferences, ARecorderQueriesNothingWhileItHoldsTheKeyboard) {
    auto tavro = launchWithPreferences();
    startRecording();
    Session::signal("xfconfd", SIGSTOP);
    input.type({Key::super}, Key::e); // the desktop's
    EXPECT_TRUE(keyboardBecomesFree());
    Session::signal("xfconfd", SIGCONT); // the window manager may wait for it
    EXPECT_TRUE(server.eventually(
        "an alert", [&] { return chooser(*tavro) != XCB_NONE && server.active() == chooser(*tavro); }));
    input.type(Key::enter);
    EXPECT_TRUE(noChooser(*tavro));
    input.type(Key::escape);
    EXPECT_TRUE(keyboardBecomesFree());
    EXPECT_TRUE(stores(R"("carbonKeyCode":35,"carbonModifiers":4352)")) << "as before";
    parkPointer();
    quit(tavro);
}

TEST_F(Preferences, ARecorderCanBeClearedOrCancelled) {
    const auto front = server.active();
    auto tavro = launchWithPreferences();
    constexpr Point elsewhere{60, 225}, fourPointsBeside{164, 157};
    const std::pair<const char*, std::function<void()>> ends[] = {
        {"Escape", [&] { input.type(Key::escape); }},
        {"a click elsewhere", [&] { clickInPreferences(elsewhere); }},
        {"a click 4 points beside the field", [&] { clickInPreferences(fourPointsBeside); }},
        {"Tab", [&] { input.type(Key::tab); }},
        {"another program", [&] { server.activate(front); }},
    };
    for (const auto& [what, end] : ends) {
        SCOPED_TRACE(what);
        startRecording();
        end();
        EXPECT_TRUE(keyboardBecomesFree());
    }
    server.activate(preferences);
    ASSERT_TRUE(server.eventually("the focus", [&] { return server.active() == preferences; }));
    startRecording(clearButton);
    input.type({Key::control, Key::shift}, Key::a);
    EXPECT_TRUE(stores(R"("carbonKeyCode":0,"carbonModifiers":4608)"));
    EXPECT_TRUE(keyboardBecomesFree());
    parkPointer();
    quit(tavro);
}
