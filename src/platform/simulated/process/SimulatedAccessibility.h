#pragma once

#include "platform/process/Accessibility.h"
#include "platform/simulated/process/Journal.h"

#include <string>
#include <vector>

namespace tavro {

/// The user's permission, which a test gives and takes, and what was said.
class SimulatedAccessibility final : public Accessibility {
public:
    explicit SimulatedAccessibility(Journal& journal)
        : m_journal(journal) {}

    bool isProcessTrusted(bool prompt) override {
        m_journal.record("accessibility.isProcessTrusted", prompt);
        return isTrusted;
    }

    void announce(const std::string& text) override { announced.push_back(text); }

    bool isTrusted = true;
    std::vector<std::string> announced;

private:
    Journal& m_journal;
};

} // namespace tavro
