#pragma once

#include <string>

namespace tavro {

/// Named notifications to every process of the session.
class DistributedNotificationCenter {
public:
    virtual ~DistributedNotificationCenter() = default;
    /// Without sender and payload. Delivered at once also to observers that are suspended, if so asked.
    virtual void post(const std::string& name, bool deliverImmediately) = 0;
};

} // namespace tavro
