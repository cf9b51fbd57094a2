#include "TavroProcess.h"

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sstream>
#include <stdexcept>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::vector<std::string> environmentOf(const TavroProcess::Launch& launch) {
    auto changes = launch.environment;
    changes.emplace("XDG_CONFIG_HOME", launch.configHome.string());
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

TavroProcess::TavroProcess(const Launch& launch) {
    auto arguments = launch.wrapper;
    arguments.push_back(TAVRO_BINARY);
    auto environment = environmentOf(launch);
    const int output = openPipe(m_output);
    const int errors = openPipe(m_errors);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors, STDERR_FILENO);
    const int failure = ::posix_spawnp(&m_pid, arguments.front().c_str(), &actions, nullptr,
                                       pointers(arguments).data(), pointers(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    ::close(output);
    ::close(errors);
    if (failure != 0)
        throw std::runtime_error("cannot start " + arguments.front());
}

TavroProcess::~TavroProcess() {
    if (m_end.empty()) {
        signal(SIGKILL);
        ::waitpid(m_pid, nullptr, 0);
    }
    ::close(m_output.descriptor);
    ::close(m_errors.descriptor);
}

/// Returns the end to write to.
int TavroProcess::openPipe(Stream& stream) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    stream.descriptor = ends[0];
    ::fcntl(stream.descriptor, F_SETFL, O_NONBLOCK);
    return ends[1];
}

const std::string& TavroProcess::read(Stream& stream) {
    char buffer[4096];
    for (ssize_t count; (count = ::read(stream.descriptor, buffer, sizeof buffer)) > 0;)
        stream.text.append(buffer, static_cast<std::size_t>(count));
    return stream.text;
}

void TavroProcess::signal(int number) const {
    if (m_end.empty())
        ::kill(m_pid, number);
}

long TavroProcess::linesOfOutput(const std::string& line) {
    std::istringstream stream(output());
    long count = 0;
    for (std::string candidate; std::getline(stream, candidate);)
        count += candidate == line;
    return count;
}

std::string TavroProcess::end() {
    if (!m_end.empty())
        return m_end;
    const int descriptor = static_cast<int>(::syscall(SYS_pidfd_open, m_pid, 0));
    pollfd ended{descriptor, POLLIN, 0};
    const bool hasEnded = ::poll(&ended, 1, 10000) == 1;
    ::close(descriptor);
    int status = 0;
    if (!hasEnded || ::waitpid(m_pid, &status, 0) != m_pid)
        return "still running";
    m_end = WIFSIGNALED(status) ? "killed by signal " + std::to_string(WTERMSIG(status))
                                : "exited with " + std::to_string(WEXITSTATUS(status));
    return m_end;
}

long lines(const std::string& text) {
    return std::ranges::count(text, '\n');
}
