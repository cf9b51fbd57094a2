#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace tavro {

/// Ends an observation when it is destroyed. May outlive what it observes.
class Observation {
public:
    Observation() = default;
    explicit Observation(std::function<void()> end)
        : m_end(std::move(end)) {}
    Observation(Observation&& other) noexcept
        : m_end(std::exchange(other.m_end, nullptr)) {}
    Observation& operator=(Observation&& other) noexcept {
        std::swap(m_end, other.m_end);
        return *this;
    }
    ~Observation() {
        if (m_end)
            m_end();
    }

private:
    std::function<void()> m_end;
};

/// Observers in the order in which they came. An observer may add and end observations while it is notified;
/// one that was ended is not notified any more, one that was added is notified from the next time on.
template <class... Arguments>
class ObserverList {
public:
    using Observer = std::function<void(Arguments...)>;

    [[nodiscard]] Observation add(Observer observer) {
        const auto id = m_observers->next++;
        m_observers->byId.emplace(id, std::make_shared<Observer>(std::move(observer)));
        return Observation([observers = std::weak_ptr(m_observers), id] {
            if (const auto list = observers.lock())
                list->byId.erase(id);
        });
    }

    void notify(Arguments... arguments) const {
        const auto observers = m_observers; // an observer may destroy this list
        const auto end = observers->next;
        for (auto entry = observers->byId.begin(); entry != observers->byId.end() && entry->first < end;) {
            const auto id = entry->first;
            const auto observer = entry->second; // and may end its own observation
            (*observer)(arguments...);
            entry = observers->byId.upper_bound(id);
        }
    }

private:
    struct Observers {
        std::map<std::uint64_t, std::shared_ptr<Observer>> byId;
        std::uint64_t next = 0;
    };
    std::shared_ptr<Observers> m_observers = std::make_shared<Observers>();
};

} // namespace tavro
