#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

/// The program under test, as a process of its own. It is gone when the scope ends.
class TavroProcess {
public:
    struct Launch {
        /// Where it keeps its settings.
        std::filesystem::path configHome;
        /// Changes of the environment; an empty value removes the variable.
        std::map<std::string, std::string> environment;
        /// A command that is given the program and runs it in its own place.
        std::vector<std::string> wrapper;
    };

    explicit TavroProcess(const Launch& launch);
    TavroProcess(const TavroProcess&) = delete;
    TavroProcess& operator=(const TavroProcess&) = delete;
    ~TavroProcess();

    pid_t pid() const { return m_pid; }
    void signal(int number) const;
    /// What it has written so far.
    const std::string& output() { return read(m_output); }
    const std::string& errors() { return read(m_errors); }
    /// How often a line stands in the output.
    long linesOfOutput(const std::string& line);
    /// "exited with 0", "killed by signal 9" or "still running", at the latest after ten seconds.
    std::string end();

private:
    struct Stream {
        int descriptor = -1;
        std::string text;
    };

    static int openPipe(Stream& stream);
    static const std::string& read(Stream& stream);

    pid_t m_pid = -1;
    std::string m_end;
    Stream m_output, m_errors;
};

/// How many lines a text has.
long lines(const std::string& text);
