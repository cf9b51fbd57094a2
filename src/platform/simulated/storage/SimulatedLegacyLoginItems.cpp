#include "platform/simulated/storage/SimulatedLegacyLoginItems.h"

namespace tavro {

bool SimulatedLegacyLoginItems::setEnabled(const std::string& helperIdentifier, bool isEnabled) {
    m_journal.record("legacyLoginItems.setEnabled", helperIdentifier, isEnabled);
    if (refuses || !jobs)
        return false;
    std::erase_if(*jobs, [&](const PropertyList& job) {
        const auto* dictionary = job.as<PropertyList::Dictionary>();
        return dictionary && dictionary->contains("Label") && dictionary->at("Label") == helperIdentifier;
    });
    if (isEnabled)
        jobs->push_back(PropertyList::Dictionary{{"Label", helperIdentifier}, {"OnDemand", true}});
    return true;
}

} // namespace tavro
