#pragma once

#include "platform/process/MainQueue.h"

#include <functional>
#include <memory>
#include <utility>

namespace tavro {

/// Folds a burst of reasons for some work into one piece of it, done when the main thread is free.
class OncePerTurn {
public:
    OncePerTurn(MainQueue& queue, std::function<void()> work)
        : m_queue(queue)
        , m_work(std::move(work)) {}

    void schedule() {
        if (!std::exchange(*m_isScheduled, true))
            m_queue.async(block());
    }
    /// Does the work now where some is due.
    void doNow() {
        if (std::exchange(*m_isScheduled, false))
            m_work();
    }

private:
    std::function<void()> block() {
        return [this, scheduled = std::weak_ptr(m_isScheduled)] {
            if (const auto alive = scheduled.lock(); alive && std::exchange(*alive, false))
                m_work();
        };
    }

    MainQueue& m_queue;
    std::function<void()> m_work;
    std::shared_ptr<bool> m_isScheduled = std::make_shared<bool>(false); // gone with this object
};

} // namespace tavro
