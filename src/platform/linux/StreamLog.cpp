#include "platform/linux/StreamLog.h"

#include <cstdio>

namespace tavro {

void StreamLog::print(std::string_view line) {
    std::fprintf(stdout, "%.*s\n", static_cast<int>(line.size()), line.data());
    std::fflush(stdout);
}

void StreamLog::diagnose(std::string_view line) {
    std::fprintf(stderr, "tavropro: %.*s\n", static_cast<int>(line.size()), line.data());
    std::fflush(stderr);
}

} // namespace tavro
