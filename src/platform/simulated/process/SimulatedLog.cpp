#include "platform/simulated/process/SimulatedLog.h"

#include <utility>

namespace tavro {

void SimulatedLog::print(std::string_view line) {
    m_journal.record("log.print", line);
    m_printed.emplace_back(line);
}

void SimulatedLog::error(const Logger& logger, std::string_view line) {
    m_journal.record("log.error", logger.subsystem, logger.category, line);
}

void SimulatedLog::diagnose(std::string_view line) {
    m_diagnosed.emplace_back(line);
}

std::vector<std::string> SimulatedLog::takeDiagnosed() {
    return std::exchange(m_diagnosed, {});
}

} // namespace tavro
