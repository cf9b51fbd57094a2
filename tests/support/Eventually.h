#pragma once

#include "WaitUntil.h"

#include <gtest/gtest.h>

#include <string>

/// Waits until the condition holds. At the deadline says what was lacking.
template <class Condition, class Pause>
testing::AssertionResult eventually(const std::string& what, const Condition& condition, const Pause& pause,
                                    std::chrono::seconds atMost = deadline) {
    if (waitUntil(condition, pause, atMost))
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << "after " << atMost.count() << " s there was still lacking: " << what;
}
