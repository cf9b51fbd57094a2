#include "TavroProcess.h"

#include "support/WaitUntil.h"

#include <algorithm>
#include <fcntl.h>
#include <poll.h>
#include <sstream>
#include <stdexcept>
#include <unistd.h>
#include <utility>

Output::Output() {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    m_reader = ends[0];
    m_writer = ends[1];
    ::fcntl(m_reader, F_SETFL, O_NONBLOCK);
}

Output::~Output() {
    ::close(m_reader);
    closeWriter();
}

void Output::closeWriter() {
    ::close(std::exchange(m_writer, -1));
}

const std::string& Output::soFar() {
    char buffer[4096];
    for (ssize_t count; (count = ::read(m_reader, buffer, sizeof buffer)) > 0;)
        m_text.append(buffer, static_cast<std::size_t>(count));
    return m_text;
}

namespace {

std::vector<std::string> command(const TavroProcess::Launch& launch) {
    auto words = launch.wrapper;
    words.push_back(TAVRO_BINARY);
    return words;
}

ChildProcess::Environment environment(const TavroProcess::Launch& launch) {
    auto changes = launch.environment;
    changes.emplace("XDG_CONFIG_HOME", launch.configHome.string());
    return changes;
}

} // namespace

TavroProcess::TavroProcess(const Launch& launch)
    : m_process(command(launch), m_output.writer(), m_errors.writer(), environment(launch)) {
    m_output.closeWriter();
    m_errors.closeWriter();
}

long TavroProcess::linesOfOutput(const std::string& line) {
    std::istringstream stream(output());
    long count = 0;
    for (std::string candidate; std::getline(stream, candidate);)
        count += candidate == line;
    return count;
}

bool TavroProcess::waitForLine(const std::string& line, long count) {
    return waitUntil([&] { return linesOfOutput(line) >= count; }, [] { ::poll(nullptr, 0, 1); });
}

long lines(const std::string& text) {
    return std::ranges::count(text, '\n');
}
