#pragma once

#include "platform/storage/PropertyList.h"

#include <optional>
#include <string>

namespace tavro {

/// Helper applications as login items (`SMLoginItemSetEnabled`, before generation 13). Main thread only.
class LegacyLoginItems {
public:
    virtual ~LegacyLoginItems() = default;
    /// Whether the system took it.
    virtual bool setEnabled(const std::string& helperIdentifier, bool isEnabled) = 0;
    /// The jobs of the user's launchd domain, each a dictionary; none when they cannot be listed.
    virtual std::optional<PropertyList::Array> copyAllJobDictionaries() const = 0;
};

} // namespace tavro
