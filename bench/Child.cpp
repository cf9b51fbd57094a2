#include "Child.h"

#include <csignal>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>

namespace bench {

Child::Child(const std::vector<std::string>& command, const std::string& outputFile)
    : m_name(command.front())
    , m_output(::open(outputFile.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600))
    , m_start(Clock::now())
    , m_process(command, m_output, m_output) {
    ::close(m_output);
}

Child::~Child() {
    signal(SIGCONT);
    signal(SIGTERM);
    m_process.end();
}

void Child::join() {
    if (const auto end = m_process.end(); end != "exited with 0")
        throw std::runtime_error(m_name + ": " + end);
}

void Child::end() {
    signal(SIGTERM);
    if (m_process.end() == "still running")
        throw std::runtime_error(m_name + " does not end when asked to");
}

} // namespace bench
