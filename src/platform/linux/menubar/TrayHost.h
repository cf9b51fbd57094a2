#pragma once

#include "platform/linux/x11/XConnection.h"

#include <QObject>

#include <functional>

namespace tavro {

class Log;
class MainQueue;

/// Tells when the desktop has a place for tray items: a StatusNotifierItem host, or else an owner of the
/// XEmbed system-tray selection. The toolkit remembers its first answer for good, so it is not asked before.
class TrayHost final : public QObject {
    Q_OBJECT

public:
    TrayHost(XConnection& x, MainQueue& queue, Log& log);

    /// Runs the block once there is a host; at once when there is one already.
    void whenAvailable(std::function<void()> block);

private Q_SLOTS:
    void hostRegistered();

private:
    void askWatcher();
    void watcherAnswered(bool hasHost);
    void lookForEmbedding();
    void becameAvailable();
    bool embeddingHasOwner() const;

    XConnection& m_x;
    MainQueue& m_queue;
    Log& m_log;
    bool m_isAvailable = false;
    bool m_asked = false;
    bool m_reported = false;
    std::vector<std::function<void()>> m_waiting;
    Observation m_newTray;
};

} // namespace tavro
