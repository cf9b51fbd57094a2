#include "platform/linux/process/StreamLog.h"

#include <gtest/gtest.h>

#include <climits>
#include <fcntl.h>

namespace tavro {
namespace {

/// What waits in a pipe; nothing is left in it.
std::string readAll(int pipe) {
    std::string text(1 << 20, ' ');
    const auto count = ::read(pipe, text.data(), text.size());
    text.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    return text;
}

TEST(StreamLog, LeavesOutWhatNobodyReadsAndSaysSo) {
    int pipe[2];
    ASSERT_EQ(::pipe2(pipe, O_CLOEXEC), 0);
    StreamLog log(pipe[1], pipe[1]);
    log.print("first");
    for (int i = 0; i < 100; ++i)
        log.diagnose(std::string(2 * PIPE_BUF, 'x'));
    EXPECT_TRUE(readAll(pipe[0]).starts_with("first\ntavropro: xxx"));
    log.diagnose("last");
    const auto text = readAll(pipe[0]);
    EXPECT_EQ(text.substr(text.find(' ', 10)),
              " lines are left out, since nobody read them\ntavropro: last\n")
        << text;
    log.print("again");
    EXPECT_EQ(readAll(pipe[0]), "again\n");
    ::close(pipe[0]);
    ::close(pipe[1]);
    log.print("to nobody");
}

} // namespace
} // namespace tavro
