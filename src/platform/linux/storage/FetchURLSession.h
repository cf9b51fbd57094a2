#pragma once

#include "platform/storage/URLSession.h"

#include <QObject>

#include <chrono>
#include <cstddef>
#include <filesystem>

namespace tavro {

class Log;

/// Fetches by a program that is started for each document, so that the network's libraries take no memory
/// here; handlers run on the main thread.
class FetchURLSession final : public URLSession {
public:
    struct Limits {
        std::size_t bytes = std::size_t{64} * 1024;
        std::chrono::milliseconds time = std::chrono::seconds(15);
    };

    FetchURLSession(std::filesystem::path program, Log& log);
    FetchURLSession(std::filesystem::path program, Log& log, Limits limits);

    FetchURLSession(const FetchURLSession&) = delete;
    FetchURLSession& operator=(const FetchURLSession&) = delete;
    /// Handlers that still wait are not called.
    ~FetchURLSession() override;

    void dataTask(const std::string& url, CompletionHandler completionHandler) override;

private:
    const std::filesystem::path m_program;
    Log& m_log;
    const Limits m_limits;
    QObject m_processes; // their parent
};

} // namespace tavro
