#pragma once

#include "platform/process/Log.h"
#include "platform/simulated/process/Journal.h"

#include <string>
#include <vector>

namespace tavro {

/// Keeps what the program says.
class SimulatedLog final : public Log {
public:
    explicit SimulatedLog(Journal& journal)
        : m_journal(journal) {}

    void print(std::string_view line) override;
    void error(const Logger& logger, std::string_view line) override;
    void diagnose(std::string_view line) override;

    const std::vector<std::string>& printed() const { return m_printed; }
    /// The diagnostics so far, which are forgotten: a test that expects some takes them.
    std::vector<std::string> takeDiagnosed();

private:
    Journal& m_journal;
    std::vector<std::string> m_printed;
    std::vector<std::string> m_diagnosed;
};

} // namespace tavro
