#pragma once

#include "platform/storage/PropertyList.h"

#include <functional>
#include <optional>
#include <string>

namespace tavro {

/// The user defaults database of the application. Main thread only.
///
/// Reads see every earlier write at once. Writes reach the disk soon after, and at the latest in
/// `synchronize`; what cannot be written is reported once in the log and stays in force for this process.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;
    /// The stored value of whatever type, or none.
    virtual std::optional<PropertyList> object(const std::string& key) const = 0;
    /// In place of what was stored, of whatever type.
    virtual void setObject(const std::string& key, PropertyList value) = 0;
    /// From then on there is no value, as if none had ever been stored.
    virtual void removeObject(const std::string& key) = 0;
    /// Returns when everything is on disk, or known not to get there: then false.
    virtual bool synchronize() = 0;
    /// Runs the block when everything set so far is on disk, or known not to get there: within the call, or
    /// later on the main queue. For notes that must outlive what is done next.
    virtual void whenWritten(std::function<void()> block) = 0;

    /// The stored value read as a Boolean; false where there is none.
    bool boolForKey(const std::string& key) const {
        const auto value = object(key);
        return value && value->boolValue();
    }
};

} // namespace tavro
