#pragma once

#include "support/ChildProcess.h"

#include <chrono>

namespace bench {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

/// A process whose time is taken; its output goes to a file.
class Child {
public:
    Child(const std::vector<std::string>& command, const std::string& outputFile);
    /// Asks it to end, if it still runs.
    ~Child();

    /// The moment before it was made.
    Clock::time_point start() const { return m_start; }
    pid_t id() const { return m_process.id(); }
    void signal(int number) const { m_process.signal(number); }
    /// Waits for the end, which has to be a success.
    void join();
    /// Asks it to end, and waits.
    void end();

private:
    std::string m_name;
    int m_output; // the process has its own
    Clock::time_point m_start;
    ChildProcess m_process;
};

} // namespace bench
