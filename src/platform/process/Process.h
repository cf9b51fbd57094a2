#pragma once

#include "platform/process/NotificationCenter.h"

#include <memory>
#include <typeindex>
#include <unordered_map>
#include <vector>

namespace tavro {

class Machine;

/// What lives from launch to exit: the machine, the in-process notification centre, and each shared object,
/// made on first use. One exists at a time; two in a row over the same machine are a relaunch.
class Process {
public:
    explicit Process(Machine& machine);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    /// The process that runs now; there must be one.
    static Process& current();

    Machine& machine() { return m_machine; }
    NotificationCenter& notificationCenter() { return m_notificationCenter; }

    /// The one object of this type, made by its default constructor on first use.
    template <class T>
    T& shared() {
        const auto type = std::type_index(typeid(T));
        if (const auto entry = m_shared.find(type); entry != m_shared.end())
            return *static_cast<T*>(entry->second);
        auto object = std::make_shared<T>();
        m_shared.emplace(type, object.get());
        m_owned.push_back(object);
        return *object;
    }

private:
    Machine& m_machine;
    NotificationCenter m_notificationCenter;
    std::unordered_map<std::type_index, void*> m_shared;
    std::vector<std::shared_ptr<void>> m_owned; // in order of creation; the last one ends first
};

/// The machine of the process that runs now.
inline Machine& machine() {
    return Process::current().machine();
}

} // namespace tavro
