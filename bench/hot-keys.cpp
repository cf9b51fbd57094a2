// How long a hot key takes from the press to its handler, in the machine itself, and with sxhkd from the
// press to the command that it starts. Prints one line for each figure: name, value, unit.
#include "Child.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "platform/input/HotKeyCenter.h"
#include "platform/linux/process/LinuxMachine.h"
#include "platform/linux/process/StreamLog.h"
#include "platform/process/Process.h"
#include "support/desktop/Input.h"

#include <QApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

using bench::Clock;
using Microseconds = std::chrono::duration<double, std::micro>;

/// The microphones' shortcut, by XTEST.
class Keys {
public:
    Clock::time_point press() {
        m_input.press(Key::super);
        m_input.press(Key::shift);
        const auto start = Clock::now();
        m_input.press(Key::m);
        return start;
    }
    void release() {
        for (const auto key : {Key::m, Key::shift, Key::super})
            m_input.release(key);
    }

private:
    using Key = Input::Key;
    XClient m_server;
    Input m_input{m_server};
};

void report(const char* name, std::vector<Microseconds> times) {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    std::printf("%s\t%.0f\tµs\n", name, middle->count());
}

void measureHandler(Keys& keys, tavro::XConnection& x, int rounds) {
    using namespace tavro::KeyboardShortcuts;
    const Name name("bench");
    Clock::time_point arrived, handled;
    bool isUp = false;
    const auto arrivals = x.on(tavro::XEvents::keyPress, [&](const auto&) { arrived = Clock::now(); });
    setShortcut(Shortcut(46, tavro::cmdKey | tavro::shiftKey), name);
    onKeyDown(name, [&] { handled = Clock::now(); });
    onKeyUp(name, [&] { isUp = true; });
    std::vector<Microseconds> fromPress, fromArrival;
    for (int round = 0; round < rounds; ++round) {
        handled = {};
        isUp = false;
        const auto start = keys.press();
        while (handled == Clock::time_point())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        keys.release();
        while (!isUp)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        fromPress.push_back(handled - start);
        fromArrival.push_back(handled - arrived);
    }
    setShortcut(std::nullopt, name);
    report("from the press to the handler", fromPress);
    report("from the event's arrival to the handler", fromArrival);
}

void measureRegistration(tavro::HotKeyCenter& center) {
    constexpr std::size_t wanted = 500;
    std::vector<tavro::EventHotKeyRef> references;
    const auto start = Clock::now();
    for (std::uint32_t modifiers = 0; modifiers < 16; ++modifiers)
        for (std::uint32_t keyCode = 0; keyCode < 127 && references.size() < wanted; ++keyCode) {
            auto reference = tavro::EventHotKeyRef::none;
            const auto mask = (modifiers & 3) << 8 | (modifiers >> 2) << 11; // the four modifiers' bits
            if (center.registerEventHotKey(keyCode, mask, {1, keyCode}, center.getEventDispatcherTarget(), 0,
                                           reference) == tavro::noErr)
                references.push_back(reference);
        }
    const auto registered = Clock::now();
    for (const auto reference : references)
        center.unregisterEventHotKey(reference);
    const auto end = Clock::now();
    if (references.size() != wanted)
        throw std::runtime_error("too few keys are free");
    std::printf("500 registrations\t%.1f\tms\n", bench::Milliseconds(registered - start).count());
    std::printf("500 times letting go\t%.1f\tms\n", bench::Milliseconds(end - registered).count());
}

void measureSxhkd(Keys& keys, const std::filesystem::path& folder, int rounds) {
    const auto pipe = folder / "pipe", config = folder / "sxhkdrc";
    ::mkfifo(pipe.c_str(), 0600);
    const int descriptor = ::open(pipe.c_str(), O_RDWR | O_NONBLOCK);
    std::ofstream(config) << "super + shift + m\n    printf x >" << pipe.string() << "\n";
    ::setenv("SXHKD_SHELL", "/bin/sh", 1);
    const bench::Child sxhkd({"sxhkd", "-c", config.string()}, (folder / "sxhkd.log").string());
    std::vector<Microseconds> times;
    pollfd readable{descriptor, POLLIN, 0};
    constexpr int mostMilliseconds = 500, mostAttempts = 20; // it may not have its keys yet
    for (int attempt = 0; static_cast<int>(times.size()) < rounds && attempt < rounds + mostAttempts;
         ++attempt) {
        const auto start = keys.press();
        const bool isTold = ::poll(&readable, 1, mostMilliseconds) == 1;
        const auto end = Clock::now();
        keys.release();
        char byte = 0;
        if (isTold && ::read(descriptor, &byte, 1) == 1)
            times.push_back(end - start);
    }
    ::close(descriptor);
    if (static_cast<int>(times.size()) < rounds)
        throw std::runtime_error("sxhkd does not answer");
    report("sxhkd, from the press to its command", times);
}

} // namespace

int main(int argc, char** argv) {
    const int rounds = 200;
    tavro::TerminationSignals signals;
    tavro::StreamLog log;
    QApplication application(argc, argv);
    const std::filesystem::path folder = std::getenv("TAVRO_SESSION_DIR");
    auto x = tavro::XConnection::open(log);
    auto& connection = *x;
    tavro::LinuxMachine machine(std::move(x), log, signals, {}, folder / "bench.plist");
    const tavro::Process process(machine);
    Keys keys;
    measureHandler(keys, connection, rounds);
    measureRegistration(machine.hotKeyCenter());
    measureSxhkd(keys, folder, rounds);
}
