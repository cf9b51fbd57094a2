#include "platform/linux/process/StreamLog.h"

#include "platform/linux/process/LogText.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <poll.h>
#include <utility>

namespace tavro {

namespace {

/// Leaves room for what is said of lines that were left out.
constexpr std::size_t longestLine = PIPE_BUF - 128;

bool wouldBlock(int descriptor) {
    pollfd stream{descriptor, POLLOUT, 0};
    return ::poll(&stream, 1, 0) == 0;
}

// A pipe that takes anything takes PIPE_BUF bytes, in one piece (POSIX, write).
void writeLine(int descriptor, std::string line) {
    line.resize(std::min<std::size_t>(line.size(), PIPE_BUF - 1));
    line += '\n';
    while (::write(descriptor, line.data(), line.size()) < 0 && errno == EINTR)
        ;
}

} // namespace

void StreamLog::print(std::string_view line) {
    write(m_output, std::string(line));
}

void StreamLog::error(const Logger& logger, std::string_view line) {
    diagnose(std::string(logger.subsystem) + " " + std::string(logger.category) + ": " + std::string(line));
}

void StreamLog::diagnose(std::string_view line) {
    write(m_errors, "tavropro: " + std::string(line));
}

void StreamLog::write(Stream& stream, std::string line) {
    line = logText(line, longestLine);
    const std::lock_guard lock(m_mutex);
    // Not by O_NONBLOCK: the flag is that of the open file, which we share with whoever started us.
    if (wouldBlock(stream.descriptor)) {
        ++stream.leftOut;
        return;
    }
    if (const auto count = std::exchange(stream.leftOut, 0); count > 0)
        line = "tavropro: " + std::to_string(count) + " lines are left out, since nobody read them\n" + line;
    writeLine(stream.descriptor, std::move(line));
}

} // namespace tavro
