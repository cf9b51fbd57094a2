#pragma once

#include "platform/process/Log.h"

#include <mutex>
#include <string>
#include <unistd.h>

namespace tavro {

/// Lines to standard output and standard error, each written at once and whole. Who reads them may hang (a
/// stopped terminal, a full pipe): what cannot be written then is counted and left out.
class StreamLog final : public Log {
public:
    explicit StreamLog(int output = STDOUT_FILENO, int errors = STDERR_FILENO)
        : m_output{output, 0}
        , m_errors{errors, 0} {}

    void print(std::string_view line) override;
    void error(const Logger& logger, std::string_view line) override;
    void diagnose(std::string_view line) override;

private:
    struct Stream {
        int descriptor;
        long leftOut;
    };
    void write(Stream& stream, std::string line);

    std::mutex m_mutex; // lines also come from other threads
    Stream m_output, m_errors;
};

} // namespace tavro
