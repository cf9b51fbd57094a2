#include "picture/Confinement.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <linux/sched.h>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace tavro {
namespace {

bool maps(std::size_t bytes, int protection) {
    return ::mmap(nullptr, bytes, protection, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0) !=
           MAP_FAILED;
}

bool startsProcess() {
    clone_args arguments{};
    arguments.exit_signal = SIGCHLD;
    return ::syscall(SYS_clone3, &arguments, sizeof arguments) >= 0;
}

bool startsProgram() {
    char* arguments[] = {nullptr};
    return ::execve("/bin/false", arguments, nullptr) == 0;
}

bool computesOnThreads() {
    std::vector<int> memory(1 << 20);
    std::thread([&] { memory.back() = 1; }).join();
    return memory.back() == 1;
}

TEST(ConfinementTest, AllowsOnlyComputation) {
    const TemporaryFolder folder;
    const auto path = (folder.path() / "file").string();
    const int file = ::open(path.c_str(), O_CREAT | O_RDWR, 0600);
    int ends[2];
    ASSERT_TRUE(file >= 0 && ::pipe(ends) == 0);
    const struct {
        const char* what;
        std::function<bool()> succeeds;
        bool isAllowed = false;
    } cases[] = {
        {"computes", computesOnThreads, true},
        {"writes to a pipe", [&] { return ::write(ends[1], "x", 1) == 1; }, true},
        {"writes to a file", [&] { return ::write(file, "x", 1) == 1; }},
        {"reads a file", [&] { return ::open(path.c_str(), O_RDONLY) >= 0; }},
        {"makes a file", [&] { return ::open((path + "2").c_str(), O_CREAT | O_WRONLY, 0600) >= 0; }},
        {"removes a file", [&] { return ::unlink(path.c_str()) == 0; }},
        {"reaches the network", [] { return ::socket(AF_INET, SOCK_STREAM, 0) >= 0; }},
        {"reaches a bus", [] { return ::socket(AF_UNIX, SOCK_STREAM, 0) >= 0; }},
        {"starts a process", [] { return ::fork() >= 0; }},
        {"starts one in the older way", [] { return ::syscall(SYS_clone, SIGCHLD, 0, 0, 0, 0) >= 0; }},
        {"starts one in the newer way", [] { return startsProcess(); }},
        {"starts a program", startsProgram},
        {"signals a process", [] { return ::kill(::getppid(), 0) == 0; }},
        {"looks into a process", [] { return ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0; }},
        {"makes code", [] { return maps(4096, PROT_WRITE | PROT_EXEC); }},
#ifndef __SANITIZE_ADDRESS__
        {"takes all memory", [] { return maps(std::size_t{4} << 30, PROT_READ | PROT_WRITE); }},
#endif
    };
    constexpr int confinedAndSucceeds = 3;
    for (const auto& [what, succeeds, isAllowed] : cases) {
        SCOPED_TRACE(what);
        const auto attempt = [&succeeds = succeeds] {
            std::_Exit((confineThisProcess() ? 2 : 0) + (succeeds() ? 1 : 0));
        };
        EXPECT_EXIT(attempt(), testing::ExitedWithCode(isAllowed ? confinedAndSucceeds : 2), "");
    }
    ::close(file);
    ::close(ends[0]);
    ::close(ends[1]);
}

} // namespace
} // namespace tavro
