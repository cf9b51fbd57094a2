#pragma once

#include <QObject>
#include <QThreadPool>

#include <memory>
#include <utility>

namespace tavro {

/// Work that takes its time, one piece after the other on a thread that is there as long.
class Background {
public:
    Background() {
        m_pool.setMaxThreadCount(1);
        m_pool.setExpiryTimeout(0);
    }
    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;
    /// Waits for what is under way; its completions do not run.
    ~Background() = default;

    /// The completion gets the result of the work on this object's own thread, never inside this call.
    template <class Work, class Completion>
    void run(Work work, Completion completion) {
        ++m_unfinished;
        m_pool.start([this, work = std::move(work), completion = std::move(completion)]() mutable {
            auto result = std::make_shared<decltype(work())>(work());
            QMetaObject::invokeMethod(
                &m_context,
                [this, result, completion = std::move(completion)]() mutable {
                    --m_unfinished;
                    completion(std::move(*result));
                },
                Qt::QueuedConnection);
        });
    }
    /// Whether there are completions still to run. On this object's own thread.
    bool isBusy() const { return m_unfinished > 0; }

private:
    int m_unfinished = 0;
    QObject m_context;  // of what comes back
    QThreadPool m_pool; // the last: it ends first
};

} // namespace tavro
