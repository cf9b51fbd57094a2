#include "Child.h"

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

extern char** environ;

namespace bench {

namespace {
constexpr std::chrono::seconds endsWithin{10};
}

Child::Child(const std::vector<std::string>& command, const std::string& outputFile)
    : m_name(command.front()) {
    std::vector<char*> arguments;
    for (const auto& word : command)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, outputFile.c_str(), O_WRONLY | O_CREAT | O_APPEND,
                                     0600);
    posix_spawn_file_actions_adddup2(&files, STDOUT_FILENO, STDERR_FILENO);
    m_start = Clock::now();
    const int error = posix_spawnp(&m_id, arguments.front(), &files, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&files);
    if (error != 0)
        throw std::system_error(error, std::generic_category(), m_name);
    m_runs = true;
}

Child::~Child() {
    if (!m_runs)
        return;
    signal(SIGCONT);
    signal(SIGTERM);
    if (!wait(endsWithin))
        signal(SIGKILL);
}

void Child::signal(int number) const {
    if (m_runs)
        ::kill(m_id, number);
}

bool Child::wait(std::chrono::seconds atMost) {
    const int descriptor = static_cast<int>(::syscall(SYS_pidfd_open, m_id, 0));
    pollfd ended{descriptor, POLLIN, 0};
    const bool hasEnded = ::poll(&ended, 1, static_cast<int>(std::chrono::milliseconds(atMost).count())) == 1;
    ::close(descriptor);
    if (hasEnded && ::waitpid(m_id, &m_status, 0) == m_id)
        m_runs = false;
    return !m_runs;
}

void Child::join() {
    if (!wait(endsWithin))
        throw std::runtime_error(m_name + " does not end");
    if (!WIFEXITED(m_status) || WEXITSTATUS(m_status) != 0)
        throw std::runtime_error(m_name + " has failed");
}

void Child::end() {
    signal(SIGTERM);
    if (!wait(endsWithin))
        throw std::runtime_error(m_name + " does not end when asked to");
}

} // namespace bench
