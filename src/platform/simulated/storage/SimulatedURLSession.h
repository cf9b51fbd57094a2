#pragma once

#include "platform/simulated/process/Journal.h"
#include "platform/storage/URLSession.h"

#include <deque>

namespace tavro {

/// A network whose other end the test plays.
class SimulatedURLSession final : public URLSession {
public:
    explicit SimulatedURLSession(Journal& journal)
        : m_journal(journal) {}

    void dataTask(const std::string& url, CompletionHandler completionHandler) override;

    /// The oldest request that waits gets its document, or fails, on the session's queue: blocks of the main
    /// one run afterwards.
    void answer(std::optional<std::string> data);
    /// The process has ended: nobody waits any more.
    void endProcess() { m_waiting.clear(); }

private:
    Journal& m_journal;
    std::deque<CompletionHandler> m_waiting;
};

} // namespace tavro
