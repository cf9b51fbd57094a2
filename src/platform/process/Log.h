#pragma once

#include <string_view>

namespace tavro {

/// Who writes to the unified log.
struct Logger {
    std::string_view subsystem;
    std::string_view category;
};

/// Where the program says what it does. A line is out when the call returns; a closed stream is not an error.
class Log {
public:
    virtual ~Log() = default;
    /// One progress or failure line of a feature, to standard output.
    virtual void print(std::string_view line) = 0;
    /// One line at error level to the unified log.
    virtual void error(const Logger& logger, std::string_view line) = 0;
    /// One diagnostic line of the machine, to standard error.
    virtual void diagnose(std::string_view line) = 0;
};

} // namespace tavro
