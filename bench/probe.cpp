// Measures programs on the desktop that it runs in, and prints one line for each figure. See bench/run.
//   bench-probe race PROGRAM SCRIPT,FLOOR ROUNDS
//                                             race    ROUND WHO  on|covered|off  MILLISECONDS|failed
//                                             (without a script where that is empty)
//   bench-probe launch PROGRAM EMPTY PAIRS    launch  PAIR  WHO  registered|drawn  MILLISECONDS
//   bench-probe memory PROGRAM EMPTY COUNT    memory  WHO  launched|presented  RSS|PSS  KILOBYTES
//   bench-probe idle PROGRAM EMPTY SECONDS    idle    WHO  THREAD  SWITCHES
// WHO is program, script, floor or empty.

#include "Child.h"
#include "Desktop.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <numeric>
#include <poll.h>
#include <stdexcept>

namespace {

using namespace bench;

std::string sessionFile(const char* name) {
    const auto* folder = std::getenv("TAVRO_SESSION_DIR");
    if (!folder)
        throw std::runtime_error("To be run in tools/desktop-session");
    return std::string(folder) + "/logs/" + name;
}

double since(Clock::time_point start, Clock::time_point end) {
    return Milliseconds(end - start).count();
}

std::string differences(const Desktop::State& before, const Desktop::State& now) {
    std::string names;
    names += before.stacking != now.stacking ? " stacking order," : "";
    names += before.active != now.active ? " active window," : "";
    names += before.minimised != now.minimised ? " minimised windows," : "";
    const auto pixels = std::inner_product(before.picture.begin(), before.picture.end(), now.picture.begin(),
                                           0L, std::plus<>(), std::not_equal_to<>());
    if (pixels != 0)
        names.append(" ").append(std::to_string(pixels)).append(" pixels,");
    return names;
}

/// TavroPRO, and where a user clicks to switch it.
class Program {
public:
    Program(Desktop& desktop, const std::string& file)
        : m_desktop(desktop)
        , m_panels(desktop.panels())
        , m_process({file}, sessionFile("program")) {
        desktop.settle();
        desktop.pressEscape(); // closes the popover
        m_item = desktop.newestItem(m_panels);
    }

    pid_t id() const { return m_process.id(); }
    void pointAtItem() { m_desktop.movePointer(m_item); }
    Clock::time_point click() { return m_desktop.click(m_item); }
    /// So that it costs nothing while something else is measured.
    void halt() { m_process.signal(SIGSTOP); }
    void resume() {
        m_process.signal(SIGCONT);
        m_desktop.settle();
    }

private:
    Desktop& m_desktop;
    Pixels m_panels;
    Child m_process;
    Point m_item;
};

class Race {
public:
    Race(const std::string& program, const std::string& others)
        : m_program(m_desktop, program)
        , m_script(others.substr(0, others.find(',')))
        , m_floor({others.substr(others.find(',') + 1)}, sessionFile("floor")) {
        m_desktop.parkPointer();
        m_before = m_desktop.state();
        m_public = m_desktop.publicAreas(m_before);
        if (m_before.active == XCB_NONE || !m_before.minimised.empty())
            throw std::runtime_error("No window is active, or not all windows are shown");
    }

    /// Each begins as often as the others.
    void run(int rounds) {
        std::vector<void (Race::*)(int)> runners{&Race::runProgram, &Race::runFloor};
        if (!m_script.empty())
            runners.push_back(&Race::runScript);
        for (int round = 1; round <= rounds; ++round) {
            for (const auto runner : runners)
                (this->*runner)(round);
            std::ranges::rotate(runners, runners.begin() + 1);
        }
    }

private:
    void runProgram(int round) {
        for (const std::string direction : {"on", "off"}) {
            m_program.pointAtItem();
            report(round, "program", direction, m_program.click());
        }
        m_desktop.settle();
    }

    void runFloor(int round) {
        m_program.halt();
        for (const std::string direction : {"on", "off"}) {
            const auto start = Clock::now();
            m_floor.signal(direction == "on" ? SIGUSR1 : SIGUSR2);
            report(round, "floor", direction, start);
        }
        m_program.resume();
    }

    void runScript(int round) {
        m_program.halt();
        for (const std::string direction : {"on", "off"}) {
            Child script({m_script, direction}, sessionFile("script"));
            report(round, "script", direction, script.start());
            script.join();
        }
        m_program.resume();
    }

    void report(int round, const char* who, const std::string& direction, Clock::time_point start) {
        const auto print = [&](const std::string& what, const std::string& figure) {
            std::printf("race\t%d\t%s\t%s\t%s\n", round, who, what.c_str(), figure.c_str());
        };
        auto what = who + (" " + direction);
        try {
            const auto change = m_desktop.settle(
                start, what, [&] { return isReached(direction, what); }, m_public);
            print(direction, std::to_string(since(start, change.any)));
            if (direction == "on")
                print("covered", std::to_string(since(start, change.outside)));
        } catch (const std::exception& error) {
            print(direction, "failed");
            std::cerr << "round " << round << ": " << error.what() << '\n';
        }
        std::fflush(stdout);
    }

    bool isReached(const std::string& direction, std::string& what) {
        if (direction == "on")
            return m_desktop.isPresentable(m_before);
        const auto different = differences(m_before, m_desktop.state());
        what = what.substr(0, what.find(':')) + ": other than before are" + different;
        return different.empty();
    }

    Desktop m_desktop;
    Program m_program;
    std::string m_script;
    Child m_floor;
    Desktop::State m_before; // what has to come back, each time
    std::vector<Rect> m_public;
};

/// When the panel last learned of a new item, in seconds of the system's clock.
double lastRegistration(const std::string& monitorOutput) {
    std::ifstream lines(monitorOutput);
    double last = 0;
    for (std::string line; std::getline(lines, line);)
        if (line.ends_with("StatusNotifierItemRegistered"))
            last = std::stod(line.substr(line.find('\t') + 1));
    return last;
}

void launch(const std::string& program, const std::string& empty, int pairs) {
    Desktop desktop;
    desktop.parkPointer();
    const auto signals = sessionFile("registrations");
    Child monitor({"dbus-monitor", "--session", "--profile",
                   "type='signal',interface='org.kde.StatusNotifierWatcher',"
                   "member='StatusNotifierItemRegistered'"},
                  signals);
    desktop.settle();
    const auto measure = [&](int pair, const char* who, const std::string& file) {
        const auto earlier = lastRegistration(signals);
        const auto panels = desktop.panels();
        const auto systemStart = std::chrono::system_clock::now().time_since_epoch();
        Child child({file}, sessionFile(who));
        const auto drawn = desktop.settle(child.start(), "launch of " + file, [&] {
            return lastRegistration(signals) != earlier && desktop.panels() != panels;
        });
        const auto registered = std::chrono::duration<double>(lastRegistration(signals)) - systemStart;
        std::printf("launch\t%d\t%s\tregistered\t%.1f\n", pair, who, Milliseconds(registered).count());
        std::printf("launch\t%d\t%s\tdrawn\t%.1f\n", pair, who, since(child.start(), drawn));
        std::fflush(stdout);
        child.end();
        desktop.settle(Clock::now(), "end of " + file, [&] { return desktop.panels() == panels; });
    };
    for (int pair = 1; pair <= pairs; ++pair) {
        if (pair % 2 == 0)
            measure(pair, "empty", empty);
        measure(pair, "program", program);
        if (pair % 2 != 0)
            measure(pair, "empty", empty);
    }
    monitor.end();
}

void reportMemory(const char* who, const char* moment, pid_t process) {
    std::ifstream lines("/proc/" + std::to_string(process) + "/smaps_rollup");
    for (std::string line; std::getline(lines, line);)
        for (const auto& [key, name] : {std::pair{"Rss:", "RSS"}, std::pair{"Pss:", "PSS"}})
            if (line.starts_with(key))
                std::printf("memory\t%s\t%s\t%s\t%ld\n", who, moment, name,
                            std::stol(line.substr(std::string(key).size())));
    std::fflush(stdout);
}

void memory(const std::string& program, const std::string& empty, int presentations) {
    Desktop desktop;
    desktop.parkPointer();
    {
        Child child({empty}, sessionFile("empty"));
        desktop.settle();
        reportMemory("empty", "launched", child.id());
    }
    desktop.settle();
    Program subject(desktop, program);
    reportMemory("program", "launched", subject.id());
    const auto before = desktop.state();
    for (int i = 0; i < presentations; ++i) {
        subject.pointAtItem();
        desktop.settle(subject.click(), "on", [&] { return desktop.isPresentable(before); });
        subject.pointAtItem();
        desktop.settle(subject.click(), "off", [&] { return desktop.state() == before; });
    }
    reportMemory("program", "presented", subject.id());
}

/// How often each thread has given up the processor or lost it: each time it had been awake.
std::map<std::string, long> switches(pid_t process) {
    std::map<std::string, long> counts;
    const auto folder = "/proc/" + std::to_string(process) + "/task";
    for (const auto& task : std::filesystem::directory_iterator(folder)) {
        std::string name, line;
        std::getline(std::ifstream(task.path() / "comm"), name);
        std::ifstream status(task.path() / "status");
        while (std::getline(status, line))
            if (line.find("voluntary_ctxt_switches:") != std::string::npos)
                counts[task.path().filename().string() + " " + name] +=
                    std::stol(line.substr(line.find(':') + 1));
    }
    return counts;
}

void idle(const std::string& program, const std::string& empty, int seconds) {
    Desktop desktop;
    desktop.parkPointer();
    Child subject({program}, sessionFile("program")), peer({empty}, sessionFile("empty"));
    desktop.settle();
    desktop.settle(); // what a launch leaves to be done later has been done
    const auto programBefore = switches(subject.id()), emptyBefore = switches(peer.id());
    ::poll(nullptr, 0, seconds * 1000);
    const auto report = [](const char* who, const auto& before, const auto& after) {
        for (const auto& [thread, count] : after)
            std::printf("idle\t%s\t%s\t%ld\n", who, thread.substr(thread.find(' ') + 1).c_str(),
                        count - (before.contains(thread) ? before.at(thread) : 0));
    };
    report("program", programBefore, switches(subject.id()));
    report("empty", emptyBefore, switches(peer.id()));
}

void measure(const std::string& what, const std::string& first, const std::string& second, int number) {
    if (what == "race")
        Race(first, second).run(number);
    else if (what == "launch")
        launch(first, second, number);
    else if (what == "memory")
        memory(first, second, number);
    else if (what == "idle")
        idle(first, second, number);
    else
        throw std::runtime_error("unknown measurement: " + what);
}

} // namespace

int main(int argc, char** argv) {
    try {
        if (argc != 5)
            throw std::runtime_error("usage: bench-probe race|launch|memory|idle FIRST SECOND NUMBER");
        measure(argv[1], argv[2], argv[3], std::stoi(argv[4]));
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::cerr << "bench-probe: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
