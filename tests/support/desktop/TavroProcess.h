#pragma once

#include "support/ChildProcess.h"

#include <filesystem>

/// What a process writes, from a pipe: a limit on the size of files does not hold for it.
class Output {
public:
    Output();
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    int writer() const { return m_writer; }
    /// The process has its own.
    void closeWriter();
    const std::string& soFar();

private:
    int m_reader = -1, m_writer = -1;
    std::string m_text;
};

/// The program under test, as a process of its own. It is gone when the scope ends.
class TavroProcess {
public:
    struct Launch {
        /// Where it keeps its settings.
        std::filesystem::path configHome;
        ChildProcess::Environment environment;
        /// A command that is given the program and runs it in its own place.
        std::vector<std::string> wrapper;
    };

    explicit TavroProcess(const Launch& launch);

    pid_t pid() const { return m_process.id(); }
    void signal(int number) const { m_process.signal(number); }
    /// What it has written so far.
    const std::string& output() { return m_output.soFar(); }
    const std::string& errors() { return m_errors.soFar(); }
    /// How often a line stands in the output.
    long linesOfOutput(const std::string& line);
    /// Waits until it stands there that often, looking each millisecond; whether it does before the deadline.
    bool waitForLine(const std::string& line, long count);
    /// "exited with 0", "killed by signal 9" or, when the deadline has passed, "still running".
    std::string end() { return m_process.end(); }

private:
    Output m_output, m_errors;
    ChildProcess m_process;
};

/// How many lines a text has.
long lines(const std::string& text);
