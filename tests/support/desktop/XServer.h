#pragma once

#include "XClient.h"
#include "support/Eventually.h"

#include <functional>

/// The server as a test sees it, which waits for what it is to show.
class XServer : public XClient {
public:
    XServer() { watch(root(), XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY); }

    /// Waits until the condition holds, looking again whenever the server reports a change and 50 times a
    /// second besides. At the deadline says what was lacking.
    testing::AssertionResult eventually(const std::string& what, const std::function<bool()>& condition) {
        return ::eventually(what, condition, [this] { waitForEvent(std::chrono::milliseconds(20)); });
    }
};
