#pragma once

#include "platform/ObserverList.h"

#include <map>
#include <string>

namespace tavro {

/// Named notifications within the process, without sender and payload, delivered before `post` returns.
class NotificationCenter {
public:
    [[nodiscard]] Observation addObserver(const std::string& name, std::function<void()> observer) {
        return m_observers[name].add(std::move(observer));
    }

    void post(const std::string& name) const {
        if (const auto entry = m_observers.find(name); entry != m_observers.end())
            entry->second.tell();
    }

private:
    std::map<std::string, ObserverList<>> m_observers;
};

} // namespace tavro
