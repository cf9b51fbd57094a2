#pragma once

#include <chrono>
#include <string>
#include <sys/types.h>
#include <vector>

namespace bench {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

/// A process of ours; its output goes to a file.
class Child {
public:
    Child(const std::vector<std::string>& command, const std::string& outputFile);
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    /// Ends it, if it still runs.
    ~Child();

    /// The moment before it was made.
    Clock::time_point start() const { return m_start; }
    pid_t id() const { return m_id; }
    void signal(int number) const;
    /// Waits for the end, which has to be a success.
    void join();
    /// Asks it to end, and waits.
    void end();

private:
    /// Whether it has ended within the time.
    bool wait(std::chrono::seconds atMost);

    std::string m_name;
    Clock::time_point m_start;
    pid_t m_id = 0;
    bool m_runs = false;
    int m_status = 0;
};

} // namespace bench
