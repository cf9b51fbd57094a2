// Measures what the program does with microphones, in a session with a sound and a notification server.
//   microphones SCRIPT ROUNDS
// prints, for 2, 20 and 200 of them, medians of ROUNDS in microseconds:
//   microphones COUNT  list|isMuted|setMute|muted|indicator|script-muted|script-indicator  MICROSECONDS
// "muted" and "indicator" begin when the shortcut's action is called, or the script's process is made.

#include "Child.h"

#include "audio/AlertMuteView.h"
#include "audio/AudioDevice.h"
#include "audio/MuteMic.h"
#include "audio/ToggleMicMute.h"
#include "platform/linux/process/LinuxMachine.h"
#include "platform/linux/process/StreamLog.h"
#include "platform/process/Process.h"
#include "platform/windows/OverlayWindow.h"
#include "support/WaitUntil.h"
#include "support/desktop/XClient.h"
#include "ui/ViewPainting.h"

#include <QApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <set>
#include <stdexcept>

namespace {

using bench::Clock;
using Microseconds = std::chrono::duration<double, std::micro>;

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

void run(const std::string& command) {
    if (std::system(command.c_str()) != 0)
        throw std::runtime_error(command);
}

void await(const char* what, const std::function<bool()>& condition) {
    if (!waitUntil(condition, [] { QCoreApplication::processEvents(); }))
        throw std::runtime_error(std::string("there was still lacking: ") + what);
}

/// The windows that show now; asked for all at once, since this is part of what is measured.
std::set<xcb_window_t> shownWindows(const XClient& server) {
    std::set<xcb_window_t> shown;
    const auto windows = server.topLevelWindows();
    std::vector<xcb_get_window_attributes_cookie_t> cookies;
    for (const auto window : windows)
        cookies.push_back(xcb_get_window_attributes(server.raw(), window));
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto answer = owned(xcb_get_window_attributes_reply(server.raw(), cookies[i], nullptr));
        if (answer && answer->map_state == XCB_MAP_STATE_VIEWABLE)
            shown.insert(windows[i]);
    }
    return shown;
}

class Bench {
public:
    Bench(std::string script, int rounds)
        : m_script(std::move(script))
        , m_rounds(rounds) {}

    void measure(std::size_t count) {
        plugIn(count);
        print(count, "list", [] { tavro::AudioDevice::inputDevices(); });
        print(count, "isMuted", [] { tavro::MuteMic::isMuted(); });
        bool mute = false;
        print(count, "setMute", [&mute] { tavro::MuteMic::setMute(mute = !mute); });
        tavro::MuteMic::setMute(false);
        measureToggles(count);
        measureScript(count);
    }

private:
    void plugIn(std::size_t count) {
        for (; m_plugged < count; ++m_plugged)
            run("pactl load-module module-null-source source_name=usb_" + std::to_string(m_plugged) +
                " >/dev/null");
        await("the microphones", [&] { return tavro::AudioDevice::inputDevices().size() == count; });
    }

    template <class Work>
    void print(std::size_t count, const char* what, Work work) const {
        std::vector<double> times;
        for (int round = 0; round < m_rounds; ++round) {
            const auto begin = Clock::now();
            work();
            times.push_back(Microseconds(Clock::now() - begin).count());
            QCoreApplication::processEvents(); // waits for a server are limited turn by turn
        }
        print(count, what, times);
    }

    static void print(std::size_t count, const char* what, const std::vector<double>& times) {
        std::printf("microphones\t%zu\t%s\t%.1f\n", count, what, median(times));
        std::fflush(stdout);
    }

    // When the action returns, the server has confirmed the last device.
    void measureToggles(std::size_t count) {
        std::vector<double> muted, shown;
        for (int round = 0; round < m_rounds; ++round) {
            const auto before = shownWindows(m_server);
            const auto begin = Clock::now();
            tavro::toggleMicMute();
            muted.push_back(Microseconds(Clock::now() - begin).count());
            await("the indicator", [&] { return shownWindows(m_server) != before; });
            shown.push_back(Microseconds(Clock::now() - begin).count());
            tavro::AlertMuteView::shared().closeAlert();
            await("its end", [&] { return shownWindows(m_server) == before; });
        }
        print(count, "muted", muted);
        print(count, "indicator", shown);
    }

    void measureScript(std::size_t count) {
        constexpr int atMostRounds = 5; // of seconds each
        std::vector<double> muted, shown;
        for (int round = 0; round < std::min(m_rounds, atMostRounds); ++round) {
            const bool mute = round % 2 == 0;
            const auto before = shownWindows(m_server);
            bench::Child script({m_script, mute ? "1" : "0"}, "/dev/null");
            await("the last microphone", [&] {
                return std::ranges::all_of(tavro::AudioDevice::inputDevices(),
                                           [mute](const auto& device) { return device.mute == mute; });
            });
            muted.push_back(Microseconds(Clock::now() - script.start()).count());
            await("the notification", [&] { return shownWindows(m_server) != before; });
            shown.push_back(Microseconds(Clock::now() - script.start()).count());
            script.join();
            await("its end", [&] { return shownWindows(m_server) == before; });
        }
        print(count, "script-muted", muted);
        print(count, "script-indicator", shown);
    }

    const std::string m_script;
    const int m_rounds;
    std::size_t m_plugged = 2; // the session's own
    XClient m_server;
};

} // namespace

int main(int argc, char** argv) try {
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication application(argc, argv);
    if (argc != 3)
        throw std::runtime_error("usage: microphones SCRIPT ROUNDS");
    tavro::StreamLog log;
    tavro::TerminationSignals signals;
    tavro::LinuxMachine machine(tavro::XConnection::open(log), log, signals,
                                {&tavro::contentOf, &tavro::makeWidget},
                                std::string(std::getenv("TAVRO_SESSION_DIR")) + "/bench.plist");
    const tavro::Process process(machine);
    Bench bench(argv[1], std::atoi(argv[2]));
    for (const std::size_t count : {2, 20, 200})
        bench.measure(count);
    return 0;
} catch (const std::exception& error) {
    std::cerr << "microphones: " << error.what() << '\n';
    return 1;
}
