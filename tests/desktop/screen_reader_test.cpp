#include "support/desktop/DesktopTest.h"

/// The program on a bus of assistive technology, as a screen reader follows it.
class ScreenReaderTest : public DesktopTest {
protected:
    testing::AssertionResult hears(const std::string& line) {
        return server.eventually("\"" + line + "\" in\n" + m_heard.soFar(), [&] {
            const auto at = m_heard.soFar().find(line + '\n', m_read);
            if (at != std::string::npos)
                m_read = at + line.size();
            return at != std::string::npos;
        });
    }
    static bool act(const std::string& action) {
        return Session::run("gdbus call --session --dest com.vantrelo.TavroPRO --object-path "
                            "/com/vantrelo/TavroPRO --method org.freedesktop.Application.ActivateAction " +
                            action + " '[]' '{}' >/dev/null");
    }

private:
    Output m_heard;
    std::size_t m_read = 0;
    ChildProcess m_bus{{"/usr/libexec/at-spi-bus-launcher", "--launch-immediately", "--a11y=1"}, 1, 2};
    ChildProcess m_reader{{TAVRO_SCREEN_READER}, m_heard.writer(), 2};
};

TEST_F(ScreenReaderTest, HearsOfSwitchesAndFollowsTheFocus) {
    ASSERT_TRUE(hears("listens"));
    auto tavro = launch();
    ASSERT_TRUE(hears("sees tavropro"));
    const auto front = server.active();
    clickItem(Input::Button::left);
    EXPECT_TRUE(hears("focus filler TavroPRO")) << "the popover";
    closePopover(*tavro, front);
    for (const auto& [action, said] : {std::pair("toggle-presentation-mode", "Presentation mode is on"),
                                       {"toggle-presentation-mode", "Presentation mode is off"},
                                       {"toggle-microphone", "Mic Muted"}}) {
        ASSERT_TRUE(act(action));
        EXPECT_TRUE(hears(std::string("says ") + said));
    }
    openPreferences();
    EXPECT_TRUE(server.eventually("the preferences", [&] { return !windows(*tavro).empty(); }));
    for (const auto* control :
         {"radio button General", "check box Launch at login", "push button Toggle TavroPRO",
          "push button Mute Mic: Shift+Super+M", "push button Select..."}) {
        EXPECT_TRUE(hears(std::string("focus ") + control));
        input.type(Input::Key::tab);
    }
    quit(tavro);
}
