#include "platform/simulated/storage/SimulatedURLSession.h"

#include <utility>

namespace tavro {

void SimulatedURLSession::dataTask(const std::string& url, CompletionHandler completionHandler) {
    m_journal.record("urlSession.dataTask", url);
    m_waiting.push_back(std::move(completionHandler));
}

void SimulatedURLSession::answer(std::optional<std::string> data) {
    const auto handler = std::move(m_waiting.front());
    m_waiting.pop_front();
    handler(std::move(data));
}

} // namespace tavro
