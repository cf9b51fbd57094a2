#pragma once

#include "platform/simulated/process/Journal.h"
#include "platform/storage/LegacyLoginItems.h"

namespace tavro {

/// The user's launchd jobs; a helper that is enabled is one of them.
class SimulatedLegacyLoginItems final : public LegacyLoginItems {
public:
    explicit SimulatedLegacyLoginItems(Journal& journal)
        : m_journal(journal) {}

    bool setEnabled(const std::string& helperIdentifier, bool isEnabled) override;
    std::optional<PropertyList::Array> copyAllJobDictionaries() const override { return jobs; }

    /// None is the fault that they cannot be listed.
    std::optional<PropertyList::Array> jobs = PropertyList::Array{};
    /// A fault: the system takes no request while it is set.
    bool refuses = false;

private:
    Journal& m_journal;
};

} // namespace tavro
