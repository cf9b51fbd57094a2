#include "platform/linux/audio/PulseSocketWatch.h"

#include <cstdlib>
#include <string_view>
#include <sys/stat.h>

namespace tavro {

namespace fs = std::filesystem;

namespace {

std::string_view variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

/// The first server of libpulse's "[{machine}][unix:]/path ..." if it is a socket.
std::optional<fs::path> socketOf(std::string_view servers) {
    auto server = servers.substr(0, servers.find(' '));
    if (server.starts_with('{'))
        server.remove_prefix(std::min(server.find('}') + 1, server.size()));
    constexpr std::string_view scheme = "unix:";
    if (server.starts_with(scheme))
        server.remove_prefix(scheme.size());
    return server.starts_with('/') ? std::optional(fs::path(server)) : std::nullopt;
}

} // namespace

PulseSocketWatch::PulseSocketWatch(std::function<void()> appeared)
    : m_appeared(std::move(appeared))
    , m_socket(socketOfEnvironment()) {}

// In the order in which libpulse looks.
std::optional<fs::path> PulseSocketWatch::socketOfEnvironment() {
    if (const auto servers = variable("PULSE_SERVER"); !servers.empty())
        return socketOf(servers);
    if (const auto folder = variable("PULSE_RUNTIME_PATH"); !folder.empty())
        return fs::path(folder) / "native";
    if (const auto folder = variable("XDG_RUNTIME_DIR"); !folder.empty())
        return fs::path(folder) / "pulse" / "native";
    return std::nullopt;
}

std::optional<PulseSocketWatch::Identity> PulseSocketWatch::identify(const fs::path& file) {
    // The number of a file that has gone may be given to the next one, so its time counts, too.
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0)
        return std::nullopt;
    return Identity{status.st_ino, status.st_ctim.tv_sec, status.st_ctim.tv_nsec};
}

void PulseSocketWatch::remember() {
    if (m_socket)
        m_known = identify(*m_socket);
}

void PulseSocketWatch::start() {
    if (!m_socket || m_watcher)
        return;
    m_watcher = std::make_unique<QFileSystemWatcher>();
    QObject::connect(m_watcher.get(), &QFileSystemWatcher::directoryChanged, m_watcher.get(),
                     [this] { look(); });
    watchNearestFolder();
    // Not within this call.
    QMetaObject::invokeMethod(
        m_watcher.get(), [this] { look(); }, Qt::QueuedConnection);
}

void PulseSocketWatch::stop() {
    if (m_watcher)
        m_watcher.release()->deleteLater(); // it may be what calls
}

// The folders on the way may come one by one, and may go.
void PulseSocketWatch::watchNearestFolder() {
    auto folder = m_socket->parent_path();
    std::error_code ignored;
    while (!fs::is_directory(folder, ignored) && folder.has_relative_path())
        folder = folder.parent_path();
    const auto name = QString::fromStdString(folder.string());
    const auto watched = m_watcher->directories();
    if (watched == QStringList(name))
        return;
    if (!watched.isEmpty())
        m_watcher->removePaths(watched);
    m_watcher->addPath(name);
}

void PulseSocketWatch::look() {
    if (!m_watcher)
        return;
    watchNearestFolder();
    const auto now = identify(*m_socket);
    if (now && now != m_known)
        m_appeared();
}

} // namespace tavro
