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

TEST(StreamLog, DropsUnreadLinesAndSaysSo) {
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

// In the one place that all lines go through.
TEST(StreamLog, EscapesForeignTextIntoOneLine) {
    const std::pair<std::string, std::string> cases[] = {
        {"Turn On --------------", "Turn On --------------"},
        {"“Grüße” \\n 日本 😀", "“Grüße” \\n 日本 😀"},
        {"", ""},
        {"one\ntwo\r\t", "one\\ntwo\\x0d\\x09"},
        {std::string("\0\x7f", 2), "\\x00\\x7f"},
        {"\x1b[2J\x1b]0;title\a", "\\x1b[2J\\x1b]0;title\\x07"},
        {"\u0085\u009b\u2028\u2029", "\\u{85}\\u{9b}\\u{2028}\\u{2029}"},
        {"gpj.\u202egnp \u2066\u200f", "gpj.\\u{202e}gnp \\u{2066}\\u{200f}"},
        {"\xff \xc3( \xed\xa0\x80 \xe2\x82", "\\xff \\xc3( \\xed\\xa0\\x80 \\xe2\\x82"},
        {std::string(3968, 'x'), std::string(3968, 'x')},
        {std::string(3967, 'x') + "ü", std::string(3965, 'x') + "…"},
        {std::string(100000, '\n'),
         [] {
             std::string line;
             while (line.size() < 3964)
                 line += "\\n";
             return line + "…";
         }()},
    };
    int pipe[2];
    ASSERT_EQ(::pipe2(pipe, O_CLOEXEC), 0);
    StreamLog log(pipe[1], pipe[1]);
    for (const auto& [text, line] : cases) {
        log.print(text);
        EXPECT_EQ(readAll(pipe[0]), line + '\n');
    }
    ::close(pipe[0]);
    ::close(pipe[1]);
}

} // namespace
} // namespace tavro
