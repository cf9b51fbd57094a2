#include "support/desktop/DesktopTest.h"
#include "support/servers/AudioServer.h"

/// Other programs at work with the tools that scripts use; one of them watches.
class BusTest : public DesktopTest {
protected:
    static bool call(const std::string& method) {
        return Session::run(
            "gdbus call --session --dest com.vantrelo.TavroPRO --object-path /com/vantrelo/TavroPRO"
            " --method org." +
            method + " >/dev/null 2>&1");
    }
    testing::AssertionResult seen(const std::string& text) {
        return server.eventually(text + " in\n" + m_seen.soFar(), [&] {
            const bool isThere = m_seen.soFar().find(text, m_read) != std::string::npos;
            if (isThere)
                m_read = m_seen.soFar().size();
            return isThere;
        });
    }

private:
    Output m_seen;
    std::size_t m_read = 0;
    ChildProcess m_watcher{{"gdbus", "monitor", "--session", "--dest", "com.vantrelo.TavroPRO"},
                           m_seen.writer(),
                           m_seen.writer()};
};

TEST_F(BusTest, ActivatesActsAndTellsWhatHasChanged) {
    const auto front = server.active();
    auto tavro = launch();
    ASSERT_TRUE(seen("is owned by"));
    ASSERT_TRUE(call("freedesktop.Application.Activate '{}'"));
    closePopover(*tavro, front);

    ASSERT_TRUE(call("freedesktop.Application.ActivateAction toggle-presentation-mode '[]' '{}'"));
    EXPECT_TRUE(seen("{'presentation-mode': <true>}"));
    EXPECT_TRUE(othersAreHidden());
    EXPECT_TRUE(everyScreenIsCovered());
    for (const bool isOn : {true, false}) // the first changes nothing
        ASSERT_TRUE(call("gtk.Actions.SetState presentation-mode '<" + std::string(isOn ? "true" : "false") +
                         ">' '{}'"));
    EXPECT_TRUE(seen("{'presentation-mode': <false>}"));
    EXPECT_TRUE(isRestored());
    EXPECT_EQ(tavro->linesOfOutput(turnedOff), 1);

    for (const bool isLive : {false, true}) {
        AudioServer::mute("mic_1", !isLive);
        AudioServer::mute("mic_2", !isLive);
        EXPECT_TRUE(seen(std::string("{'microphone': <") + (isLive ? "true>" : "false>")));
    }
    ASSERT_TRUE(call("gtk.Actions.SetState microphone '<false>' '{}'"));
    EXPECT_TRUE(seen("{'microphone': <false>}"));
    EXPECT_TRUE(AudioServer::isMuted("mic_1") && AudioServer::isMuted("mic_2"));
    ASSERT_TRUE(call("gtk.Actions.Activate microphone '[]' '{}'"));
    EXPECT_TRUE(seen("{'microphone': <true>}"));

    for (const auto* refused : {"ActivateAction nonsense '[]' '{}'", "ActivateAction quit '[<true>]' '{}'"})
        EXPECT_FALSE(call("freedesktop.Application." + std::string(refused)));
    ASSERT_TRUE(call("freedesktop.Application.ActivateAction quit '[]' '{}'"));
    EXPECT_EQ(tavro->end(), "exited with 0");
    EXPECT_EQ(complaints(*tavro), "");
    EXPECT_TRUE(server.eventually("an empty tray after the end", [this] { return tray.isEmpty(); }));
}
