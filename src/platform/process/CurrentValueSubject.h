#pragma once

#include "platform/process/ObserverList.h"

namespace tavro {

/// A stream of values that never fails.
template <class T>
class Publisher {
public:
    virtual ~Publisher() = default;
    /// The receiver gets the latest value at once, then each one that is sent.
    [[nodiscard]] virtual Observation sink(std::function<void(const T&)> receiver) = 0;
};

/// A publisher that is fed by hand.
template <class T>
class CurrentValueSubject final : public Publisher<T> {
public:
    explicit CurrentValueSubject(T value)
        : m_value(std::move(value)) {}

    void send(T value) {
        m_value = std::move(value);
        m_receivers.notify(m_value);
    }

    [[nodiscard]] Observation sink(std::function<void(const T&)> receiver) override {
        receiver(m_value);
        return m_receivers.add(std::move(receiver));
    }

private:
    T m_value;
    ObserverList<T> m_receivers;
};

} // namespace tavro
