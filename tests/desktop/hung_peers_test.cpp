#include "support/desktop/DesktopTest.h"
#include "support/servers/AudioServer.h"

#include <algorithm>
#include <csignal>

namespace {

using namespace std::chrono_literals;

/// Stops processes of the session for as long as it lives.
class Stopped {
public:
    explicit Stopped(std::vector<std::string> pieces)
        : m_pieces(std::move(pieces)) {
        for (const auto& piece : m_pieces)
            Session::signal(piece, SIGSTOP);
    }
    Stopped(const Stopped&) = delete;
    Stopped& operator=(const Stopped&) = delete;
    ~Stopped() {
        for (const auto& piece : m_pieces)
            Session::signal(piece, SIGCONT);
    }

private:
    const std::vector<std::string> m_pieces;
};

} // namespace

/// The program beside peers that do not answer. Control-Super-P switches presentation mode.
class HungPeers : public DesktopTest {
protected:
    void SetUp() override {
        DesktopTest::SetUp();
        writeDefaults(R"(<key>KeyboardShortcuts_tavroGlobalShortcut</key>
            <string>{"carbonKeyCode":35,"carbonModifiers":4352}</string><key>muteSpeaker</key><true/>)");
    }

    void pressShortcut() { input.type({Input::Key::control, Input::Key::super}, Input::Key::p); }

    /// Within a time that is far below what the bus waits for an answer, and far above what a busy machine
    /// needs.
    testing::AssertionResult soon(const std::string& what, const std::function<bool()>& condition) {
        return ::eventually(
            what, condition, [this] { server.waitForEvent(5ms); }, 10s);
    }
    bool isCovered() const {
        return std::ranges::all_of(server.screens(), [this](const auto& screen) {
            return server.pixelsBesidesWallpaper(screen) == 0;
        });
    }
    testing::AssertionResult comesToBeQuiet(bool isQuiet) {
        const auto* question = "test \"$(xfconf-query -c xfce4-notifyd -p /do-not-disturb)\" = ";
        return server.eventually(isQuiet ? "silence" : "the end of the silence", [&] {
            return Session::run(question + std::string(isQuiet ? "true" : "false")) &&
                   AudioServer::isMuted("speaker_1") == isQuiet;
        });
    }
};

TEST_F(HungPeers, DoNotHoldUpWhatTheAudienceSeesAndGetTheirWorkWhenTheyAnswer) {
    const std::vector<std::string> all{"panel", "bus", "notifyd", "sound", "xfconfd"};
    // The window manager reads its shortcuts anew soon after the first key of the session, and hangs itself
    // where xfconfd does not answer then; so that is the last.
    std::vector<std::vector<std::string>> cases;
    for (const auto& piece : all)
        cases.push_back({piece});
    cases.push_back(all);
    for (const auto& pieces : cases) {
        SCOPED_TRACE(pieces.size() == 1 ? pieces.front() : "all");
        auto tavro = launch();
        const auto others = windowsBesides("Chat");
        for (const bool isOn : {true, false}) {
            {
                const Stopped stopped(pieces);
                pressShortcut();
                EXPECT_TRUE(soon(isOn ? "the others hidden and the icons covered" : "the windows back", [&] {
                    return isOn ? areMinimised(others) && isCovered()
                                : covers(*tavro).empty() && server.isViewable(others.front());
                }));
            }
            waitForTray(isOn);
            EXPECT_TRUE(comesToBeQuiet(isOn));
        }
        EXPECT_TRUE(isRestored());
        EXPECT_LE(lines(tavro->errors()), 2) << tavro->errors();
        quit(tavro);
    }
}
