#pragma once

#include "platform/process/ObserverList.h"

namespace tavro {

/// An observable field. Observers are notified before the new value is stored, so a view schedules its redraw
/// and reads the value when it draws.
template <class T>
class Published {
public:
    explicit Published(T value)
        : m_value(std::move(value)) {}

    const T& get() const { return m_value; }

    /// Tells the observers, also where the value stays the same, then stores it.
    void set(T value) {
        m_observers.notify();
        m_value = std::move(value);
    }

    [[nodiscard]] Observation willChange(std::function<void()> observer) {
        return m_observers.add(std::move(observer));
    }

private:
    T m_value;
    ObserverList<> m_observers;
};

} // namespace tavro
