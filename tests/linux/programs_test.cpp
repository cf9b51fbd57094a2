#include "platform/linux/process/Programs.h"

#include "support/Eventually.h"
#include "support/Files.h"
#include "support/TemporaryFolder.h"
#include "support/machines/ProcessEvents.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace tavro {
namespace {

TEST(Programs, InheritNeitherSignalMasksNorFiles) {
    int count = 0;
    const QCoreApplication application(count, nullptr);
    const TemporaryFolder folder;
    const auto result = folder.path() / "result", partOfIt = folder.path() / "part";
    sigset_t ours, before;
    sigemptyset(&ours);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&ours, signal);
    ::pthread_sigmask(SIG_BLOCK, &ours, &before);
    for (const int signal : {SIGPIPE, SIGUSR1})
        ::signal(signal, SIG_IGN);
    const int file = ::open("/dev/zero", O_RDONLY); // without O_CLOEXEC
    const auto script =
        "exec >'" + partOfIt.string() +
        "'; grep -E 'Sig(Blk|Ign)' /proc/self/status; for i in /proc/$$/fd/*; do readlink $i; done; "
        "mv '" +
        partOfIt.string() + "' '" + result.string() + "'";
    EXPECT_TRUE(startDetached("sh", {"-c", QString::fromStdString(script)}));
    EXPECT_FALSE(startDetached(QString::fromStdString(result.string()), {}));
    ::close(file);
    for (const int signal : {SIGPIPE, SIGUSR1})
        ::signal(signal, SIG_DFL);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    ASSERT_TRUE(eventually(
        "the answer", [&] { return std::filesystem::exists(result); }, &processEvents));
    std::ifstream answer(result);
    std::string name, input, output, errors;
    unsigned long long blocked = 0, ignored = 0;
    answer >> name >> std::hex >> blocked >> name >> ignored >> input >> output >> errors;
    // The C library keeps the next two signals for itself, and whoever runs the tests may ignore them.
    constexpr unsigned long long standardSignals = 0x7FFFFFFF;
    EXPECT_EQ(blocked, 0u);
    EXPECT_EQ(ignored & standardSignals, 0u);
    EXPECT_EQ(input + output + errors, "/dev/null" + partOfIt.string() + "/dev/null");
    EXPECT_FALSE(answer >> name) << "another file is open: " << name;
}

} // namespace
} // namespace tavro
