#pragma once

#include "platform/process/Accessibility.h"
#include "platform/simulated/process/Journal.h"

namespace tavro {

/// The user's permission, which a test gives and takes.
class SimulatedAccessibility final : public Accessibility {
public:
    explicit SimulatedAccessibility(Journal& journal)
        : m_journal(journal) {}

    bool isProcessTrusted(bool prompt) override {
        m_journal.record("accessibility.isProcessTrusted", prompt);
        return isTrusted;
    }

    bool isTrusted = true;

private:
    Journal& m_journal;
};

} // namespace tavro
