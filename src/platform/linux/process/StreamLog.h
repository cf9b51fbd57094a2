#pragma once

#include "platform/process/Log.h"

namespace tavro {

/// Lines to standard output and standard error, flushed one by one.
class StreamLog final : public Log {
public:
    void print(std::string_view line) override;
    void error(const Logger& logger, std::string_view line) override;
    void diagnose(std::string_view line) override;
};

} // namespace tavro
