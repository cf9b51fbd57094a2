#pragma once

#include "platform/notifications/Preferences.h"
#include "platform/simulated/process/Journal.h"

#include <map>
#include <utility>

namespace tavro {

/// Preferences that other processes see as of the last `synchronize`.
class SimulatedPreferences final : public Preferences {
public:
    explicit SimulatedPreferences(Journal& journal)
        : m_journal(journal) {}

    bool appBooleanValue(const std::string& key, const std::string& applicationID) const override;
    void setValue(const std::string& key, std::optional<PropertyList> value,
                  const std::string& applicationID) override;
    void synchronize(const std::string& applicationID) override;

    /// What the application itself finds when it starts.
    PropertyList::Dictionary synchronized(const std::string& applicationID) const;
    /// Another program's write.
    void otherProgramSets(const std::string& key, PropertyList value, const std::string& applicationID);

private:
    Journal& m_journal;
    std::map<std::string, PropertyList::Dictionary> m_values, m_disk; // by application
};

} // namespace tavro
