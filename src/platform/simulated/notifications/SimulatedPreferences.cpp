#include "platform/simulated/notifications/SimulatedPreferences.h"

namespace tavro {

bool SimulatedPreferences::appBooleanValue(const std::string& key, const std::string& applicationID) const {
    const auto domain = m_values.find(applicationID);
    if (domain == m_values.end() || !domain->second.contains(key))
        return false;
    return domain->second.at(key).boolValue();
}

void SimulatedPreferences::setValue(const std::string& key, std::optional<PropertyList> value,
                                    const std::string& applicationID) {
    if (value) {
        m_journal.record("preferences.setValue", applicationID, key, *value);
        m_values[applicationID].insert_or_assign(key, std::move(*value));
    } else {
        m_journal.record("preferences.removeValue", applicationID, key);
        m_values[applicationID].erase(key);
    }
}

void SimulatedPreferences::synchronize(const std::string& applicationID) {
    m_journal.record("preferences.synchronize", applicationID);
    m_disk[applicationID] = m_values[applicationID];
}

PropertyList::Dictionary SimulatedPreferences::synchronized(const std::string& applicationID) const {
    const auto domain = m_disk.find(applicationID);
    return domain == m_disk.end() ? PropertyList::Dictionary() : domain->second;
}

void SimulatedPreferences::otherProgramSets(const std::string& key, PropertyList value,
                                            const std::string& applicationID) {
    m_values[applicationID].insert_or_assign(key, value);
    m_disk[applicationID].insert_or_assign(key, std::move(value));
}

} // namespace tavro
