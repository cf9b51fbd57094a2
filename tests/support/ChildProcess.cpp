#include "ChildProcess.h"

#include "WaitUntil.h"

#include <csignal>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace {

std::vector<std::string> environmentWith(const ChildProcess::Environment& changes) {
    std::vector<std::string> environment;
    for (char** entry = environ; *entry; ++entry) {
        const std::string text = *entry;
        if (!changes.contains(text.substr(0, text.find('='))))
            environment.push_back(text);
    }
    for (const auto& [name, value] : changes)
        if (!value.empty())
            environment.push_back(name + "=" + value);
    return environment;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (auto& text : texts)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

} // namespace

ChildProcess::ChildProcess(std::vector<std::string> command, int output, int errors,
                           const Environment& changes) {
    auto environment = environmentWith(changes);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors, STDERR_FILENO);
    const int failure = ::posix_spawnp(&m_id, command.front().c_str(), &actions, nullptr,
                                       pointers(command).data(), pointers(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0)
        throw std::system_error(failure, std::generic_category(), command.front());
}

ChildProcess::~ChildProcess() {
    if (!m_end.empty())
        return;
    signal(SIGKILL);
    ::waitpid(m_id, nullptr, 0);
}

void ChildProcess::signal(int number) const {
    if (m_end.empty())
        ::kill(m_id, number);
}

std::string ChildProcess::end() {
    if (!m_end.empty())
        return m_end;
    int status = 0;
    if (!waitForEnd(m_id) || ::waitpid(m_id, &status, 0) != m_id)
        return "still running";
    m_end = WIFSIGNALED(status) ? "killed by signal " + std::to_string(WTERMSIG(status))
                                : "exited with " + std::to_string(WEXITSTATUS(status));
    return m_end;
}

bool waitForEnd(pid_t process) {
    const int descriptor = static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
    if (descriptor < 0) // gone already
        return true;
    pollfd ended{descriptor, POLLIN, 0};
    const bool hasEnded =
        ::poll(&ended, 1, static_cast<int>(std::chrono::milliseconds(deadline).count())) == 1;
    ::close(descriptor);
    return hasEnded;
}
