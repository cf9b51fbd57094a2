#pragma once

#include <chrono>

/// How long anything is waited for at the most. Only a failure takes that long, so that a busy machine may
/// have it.
constexpr std::chrono::seconds deadline{30};

/// Looks, with a pause between two looks, until the condition holds; false when the deadline passes first.
template <class Condition, class Pause>
bool waitUntil(const Condition& condition, const Pause& pause, std::chrono::seconds atMost = deadline) {
    const auto end = std::chrono::steady_clock::now() + atMost;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        pause();
    }
    return true;
}
