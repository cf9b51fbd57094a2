#pragma once

#include "platform/storage/PropertyList.h"

#include <optional>
#include <string>

namespace tavro {

/// The preferences of other applications, by their identifiers: those of the current user on the current
/// host.
class Preferences {
public:
    virtual ~Preferences() = default;
    /// False where there is none.
    virtual bool appBooleanValue(const std::string& key, const std::string& applicationID) const = 0;
    /// No value removes the key. Other processes see it after `synchronize`.
    virtual void setValue(const std::string& key, std::optional<PropertyList> value,
                          const std::string& applicationID) = 0;
    virtual void synchronize(const std::string& applicationID) = 0;
};

} // namespace tavro
