#pragma once

#include "platform/process/ObserverList.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tavro {

/// A flag of the application that other programs read, watch and set.
struct ActionState {
    std::function<bool()> get;
    std::function<void(bool)> set;
    /// From now on the block runs whenever the flag may have changed.
    std::function<Observation(std::function<void()>)> observe;
};

/// What another program can ask of the application, by name. One with a state is asked for that, and has no
/// block of its own: asking for it without a value inverts it.
struct Action {
    std::string name;
    std::function<void()> block;
    std::optional<ActionState> state;
};

/// The application as other programs drive it. Main thread only.
class Actions {
public:
    virtual ~Actions() = default;
    /// Once, when the application is ready for them. What others ask for runs later, on the main queue.
    virtual void offer(std::vector<Action> actions) = 0;
};

} // namespace tavro
