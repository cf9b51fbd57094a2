#pragma once

#include <chrono>
#include <functional>

namespace tavro {

/// The queue of the main thread. Blocks run one by one, in the order of their due times, and never inside the
/// call that queued them. Main thread only.
class MainQueue {
public:
    using Duration = std::chrono::duration<double>;

    virtual ~MainQueue() = default;
    /// Runs the block as soon as the main thread is free.
    virtual void async(std::function<void()> block) = 0;
    /// Runs the block that much later; never earlier.
    virtual void asyncAfter(Duration delay, std::function<void()> block) = 0;
};

} // namespace tavro
