#pragma once

#include "platform/process/ObserverList.h"

#include <any>
#include <map>
#include <string>

namespace tavro {

/// Named notifications within the process, without sender, delivered before `post` returns.
class NotificationCenter {
public:
    using UserInfo = std::map<std::string, std::any>;

    [[nodiscard]] Observation addObserver(const std::string& name,
                                          std::function<void(const UserInfo&)> observer) {
        return m_observers[name].add(std::move(observer));
    }
    [[nodiscard]] Observation addObserver(const std::string& name, std::function<void()> observer) {
        return addObserver(name, [observer = std::move(observer)](const UserInfo&) { observer(); });
    }

    /// A name that nobody observes is no error.
    void post(const std::string& name, const UserInfo& userInfo = {}) const {
        if (const auto entry = m_observers.find(name); entry != m_observers.end())
            entry->second.notify(userInfo);
    }

private:
    std::map<std::string, ObserverList<const UserInfo&>> m_observers;
};

} // namespace tavro
