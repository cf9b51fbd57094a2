#include "support/desktop/DesktopTest.h"
#include "support/servers/AudioServer.h"

/// The program with Control-Super-P for presentation mode, and the default for the microphones.
class Shortcuts : public DesktopTest {
protected:
    using Key = Input::Key;
    static constexpr auto key = static_cast<xcb_keycode_t>(Key::p);

    void SetUp() override {
        DesktopTest::SetUp();
        writeDefaultsWithShortcut("<key>hideApps</key><false/><key>hideDesktop</key><false/>");
    }
    void TearDown() override {
        Session::run("setxkbmap -layout us");
        DesktopTest::TearDown();
    }

    long switches() { return tavro->linesOfOutput(turnedOn) + tavro->linesOfOutput(turnedOff); }
    /// Waits for it, and for the tray, which shows it too.
    testing::AssertionResult hasSwitched(long times) {
        auto result = server.eventually("the switch", [&] { return switches() >= times; });
        waitForTray(times % 2 == 1);
        return result && switches() != times ? testing::AssertionFailure() << "it has switched too often"
                                             : result;
    }
    /// Presses it, with presentation mode off before and after.
    void switchOnAndOff() {
        const auto before = switches();
        pressShortcut();
        ASSERT_TRUE(hasSwitched(before + 1));
        pressShortcut();
        ASSERT_TRUE(hasSwitched(before + 2));
    }

    std::unique_ptr<TavroProcess> tavro;
};

TEST_F(Shortcuts, StayOnTheirKeysInEveryLayoutAndLockState) {
    const std::pair<const char*, int> cases[] = {
        {"xdotool key Caps_Lock", XCB_MOD_MASK_4},
        {"xdotool key Num_Lock", XCB_MOD_MASK_4}, // both of them
        {"xdotool key Caps_Lock", XCB_MOD_MASK_4},
        {"xdotool key Num_Lock; setxkbmap -layout fr", XCB_MOD_MASK_4},
        {"setxkbmap -layout ru,us", XCB_MOD_MASK_4},
        {"xmodmap -e 'remove mod4 = Super_L Super_R Hyper_L' -e 'add mod3 = Super_L'", XCB_MOD_MASK_3},
        {"setxkbmap -layout us; xmodmap -e 'clear mod4'", 0},
        {"setxkbmap -layout us", XCB_MOD_MASK_4},
    };
    tavro = launch();
    for (const auto& [change, superBit] : cases) {
        SCOPED_TRACE(change);
        ASSERT_TRUE(Session::run(change));
        waitForTray(false); // a program that answers has seen it, and nobody may try the key before
        const auto state = static_cast<std::uint16_t>(XCB_MOD_MASK_CONTROL | superBit);
        const bool isFree = server.grab(key, state);
        EXPECT_EQ(isFree, superBit == 0) << "a keyboard without Super keeps Control-P";
        if (isFree)
            server.ungrab(key, state);
        else
            switchOnAndOff();
    }
    quit(tavro);
}

TEST_F(Shortcuts, AKeyThatIsHeldSwitchesOnce) {
    Session::run("xset r rate 200 50");
    tavro = launch();
    for (const auto each : {Key::control, Key::super, Key::p})
        input.press(each);
    ASSERT_TRUE(hasSwitched(1));
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
    ASSERT_TRUE(server.eventually("repetitions", [&] { return std::chrono::steady_clock::now() > end; }));
    waitForTray(true); // a program that answers has dealt with them
    EXPECT_EQ(switches(), 1);
    for (const auto each : {Key::super, Key::control, Key::p})
        input.release(each);
    pressShortcut();
    EXPECT_TRUE(hasSwitched(2));
    quit(tavro);
}

TEST_F(Shortcuts, KeysOfOtherProgramsStayTheirs) {
    constexpr std::uint16_t modifiers = XCB_MOD_MASK_4 | XCB_MOD_MASK_CONTROL;
    ASSERT_TRUE(server.grab(key, modifiers | XCB_MOD_MASK_LOCK));
    tavro = launch();
    EXPECT_EQ(lines(tavro->errors()), 1) << tavro->errors();
    for (const int lock : {0, +XCB_MOD_MASK_2}) {
        const auto state = static_cast<std::uint16_t>(modifiers | lock);
        EXPECT_TRUE(server.grab(key, state)) << "half a grab is left";
        server.ungrab(key, state);
    }
    server.ungrab(key, modifiers | XCB_MOD_MASK_LOCK);
    quit(tavro);

    tavro = launch(); // now it is free
    ASSERT_TRUE(server.grabKeyboard());
    pressShortcut();
    ASSERT_TRUE(server.eventually("the keys in the program that holds the keyboard",
                                  [&] { return server.keysSeen().size() == 3; }));
    server.ungrabKeyboard();
    switchOnAndOff();
    EXPECT_EQ(switches(), 2);
    quit(tavro);
}

TEST_F(Shortcuts, TheMicrophonesShortcutWorksFromTheFirstRunOnAndShowsAnIndicator) {
    std::filesystem::remove(defaultsFile());
    tavro = launch();
    const auto indicators = [this] { return server.topWindows(tavro->pid(), {200, 200}).size(); };
    for (const bool mutes : {true, false}) {
        input.type({Key::super, Key::shift}, Key::m);
        EXPECT_TRUE(server.eventually("an indicator", [&] { return indicators() == 1; }));
        EXPECT_TRUE(server.eventually("the end of the indicator", [&] { return indicators() == 0; }));
        for (const auto* name : {"mic_1", "mic_2"})
            EXPECT_EQ(AudioServer::isMuted(name), mutes) << name;
    }
    quit(tavro);
}
