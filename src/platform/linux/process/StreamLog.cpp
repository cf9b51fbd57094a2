#include "platform/linux/process/StreamLog.h"

#include <cstdio>
#include <string>

namespace tavro {

void StreamLog::print(std::string_view line) {
    std::fprintf(stdout, "%.*s\n", static_cast<int>(line.size()), line.data());
    std::fflush(stdout);
}

void StreamLog::error(const Logger& logger, std::string_view line) {
    diagnose(std::string(logger.subsystem) + " " + std::string(logger.category) + ": " + std::string(line));
}

void StreamLog::diagnose(std::string_view line) {
    std::fprintf(stderr, "tavropro: %.*s\n", static_cast<int>(line.size()), line.data());
    std::fflush(stderr);
}

} // namespace tavro
