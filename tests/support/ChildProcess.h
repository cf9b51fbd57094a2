#pragma once

#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

/// A process of ours. It is gone when the scope ends.
class ChildProcess {
public:
    /// Changes of the environment; an empty value removes the variable.
    using Environment = std::map<std::string, std::string>;

    /// Looks for the program where the shell does. What it writes goes to the two descriptors.
    ChildProcess(std::vector<std::string> command, int output, int errors, const Environment& changes = {});
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    pid_t id() const { return m_id; }
    void signal(int number) const;
    /// "exited with 0", "killed by signal 9" or, when the deadline has passed, "still running".
    std::string end();

private:
    pid_t m_id = -1;
    std::string m_end;
};

/// Waits for the end of a process, of whomever it is a child; false when the deadline passes first.
bool waitForEnd(pid_t process);
