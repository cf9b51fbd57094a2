#pragma once

#include <string>
#include <sys/types.h>

/// The pieces of the private desktop, by the names of its start scripts.
class Session {
public:
    /// Whether the test runs in a private desktop at all, and not in somebody's own.
    static bool isPrivate();
    /// Of its environment; empty when not set.
    static std::string variable(const char* name);
    static pid_t pid(const std::string& piece);
    static void signal(const std::string& piece, int number);
    static void start(const std::string& piece);
    /// Runs a command of the shell; whether it succeeded.
    static bool run(const std::string& command);
};
