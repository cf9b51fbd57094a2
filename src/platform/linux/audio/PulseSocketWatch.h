#pragma once

#include <QFileSystemWatcher>

#include <filesystem>
#include <functional>
#include <optional>

namespace tavro {

/// Tells when an audio server may have come up: its socket is another than before. Where the socket is not
/// known (a server elsewhere, or named in a file of libpulse's) it reports nothing.
class PulseSocketWatch final {
public:
    explicit PulseSocketWatch(std::function<void()> appeared);

    /// The socket of now, or that there is none, is what a new one is compared with.
    void remember();
    /// From now on, and also for one that has come since `remember`.
    void start();
    void stop();

    /// Where libpulse's environment says that the server's socket is.
    static std::optional<std::filesystem::path> socketOfEnvironment();

private:
    /// Distinguishes a socket from another one of its name.
    struct Identity {
        std::uint64_t inode = 0;
        std::int64_t seconds = 0, nanoseconds = 0;
        bool operator==(const Identity&) const = default;
    };

    static std::optional<Identity> identify(const std::filesystem::path& file);
    void look();
    void watchNearestFolder();

    std::function<void()> m_appeared;
    std::optional<std::filesystem::path> m_socket;
    std::optional<Identity> m_known;
    std::unique_ptr<QFileSystemWatcher> m_watcher; // only while it is of use
};

} // namespace tavro
