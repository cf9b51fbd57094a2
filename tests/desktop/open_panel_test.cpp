#include "support/DesktopTest.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

/// The preferences window, and the file chooser of its button "Select...".
class OpenPanel : public DesktopTest {
protected:
    void SetUp() override {
        DesktopTest::SetUp();
        ASSERT_TRUE(Session::run("convert -size 300x200 xc:#20A040 '" + picture.string() + "'"));
        std::ofstream(text) << "no picture\n";
        // Control-Command-P (Control-Super) switches presentation mode.
        std::ofstream(defaultsFile()) << R"(<plist version="1.0"><dict>
            <key>KeyboardShortcuts_tavroGlobalShortcut</key>
            <string>{"carbonKeyCode":35,"carbonModifiers":4352}</string>
            <key>hideApps</key><false/><key>hideDesktop</key><false/></dict></plist>)";
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

    std::vector<xcb_window_t> windows(const TavroProcess& tavro) const { return covers(tavro); }

    xcb_window_t chooser(const TavroProcess& tavro) const {
        auto others = windows(tavro);
        std::erase(others, preferences);
        return others.size() == 1 ? others.front() : xcb_window_t{XCB_NONE};
    }

    void clickInPreferences(Point point) {
        const auto corner = server.place(preferences);
        input.click({corner.x + point.x, corner.y + point.y}, Input::Button::left);
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
        input.type(Input::Key::enter);
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
        return server.eventually(isUsed ? "the flag" : "no flag", [&] {
            std::ifstream file(defaultsFile());
            const std::string all{std::istreambuf_iterator<char>(file), {}};
            const auto key = all.find("<key>wallpaperFile</key>");
            const bool isSet =
                key != std::string::npos && all.find("<true/>", key) < all.find("<key>", key + 1);
            return isSet == isUsed;
        });
    }

    static fs::path storedFile() { return fs::path(std::getenv("HOME")) / "Documents" / "wallpaper.png"; }

    const fs::path picture = config.path() / "mine.png", text = config.path() / "text.png";
    xcb_window_t preferences = XCB_NONE;
    static constexpr std::uint32_t green = 0x20A040;
    // In the window, without the preview and with it.
    static constexpr Point selectButton{207, 251}, removeButton{290, 359}, inPreview{260, 300};
};

TEST_F(OpenPanel, AChosenPictureIsStoredAndShownUntilItIsRemoved) {
    fs::remove(storedFile());
    auto tavro = launchWithPreferences();
    openChooser(*tavro);
    const auto dialog = server.place(chooser(*tavro)), screen = server.screens().front();
    EXPECT_TRUE(dialog.width >= 600 && dialog.height >= 400 && screen.contains({dialog.x, dialog.y}) &&
                screen.contains({dialog.x + dialog.width - 1, dialog.y + dialog.height - 1}))
        << dialog;
    input.type(Input::Key::escape);
    EXPECT_TRUE(noChooser(*tavro));
    EXPECT_EQ(lines(tavro->output()), tavro->linesOfOutput("resign active")) << "cancelled";
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
    quit(tavro);
    EXPECT_EQ(tavro->linesOfOutput("Not an image: " + text.string()), 1);
}

TEST_F(OpenPanel, ThereIsOneAndTheProgramGoesOnBehindItAndEndsWithIt) {
    auto tavro = launchWithPreferences();
    openChooser(*tavro);
    const auto first = chooser(*tavro);
    ASSERT_TRUE(Session::run("xdotool windowmove " + std::to_string(first) + " 40 500"));
    ASSERT_TRUE(server.eventually("the chooser elsewhere", [&] { return server.place(first).x < 60; }));
    clickInPreferences(selectButton);
    EXPECT_TRUE(server.eventually("the same chooser with the focus",
                                  [&] { return chooser(*tavro) == first && server.active() == first; }));
    for (const auto* line : {turnedOn, turnedOff}) {
        for (const auto key : {Input::Key::control, Input::Key::super})
            input.press(key);
        input.type(Input::Key::p);
        for (const auto key : {Input::Key::control, Input::Key::super})
            input.release(key);
        EXPECT_TRUE(tavro->waitForLine(line, 1));
        waitForTray(line == turnedOn);
    }
    EXPECT_EQ(chooser(*tavro), first);
    parkPointer();
    quit(tavro);
}
