#pragma once

#include "platform/linux/menubar/TrayIcon.h"
#include "platform/linux/x11/XConnection.h"

#include <QDBusConnection>
#include <QObject>

#include <vector>

namespace tavro {

class Log;
class MainQueue;

/// The desktop's place for tray items: a StatusNotifierItem host, or else an owner of the XEmbed system-tray
/// selection. Which of them is found first, once there is one, stays.
class TrayHost final : public QObject {
    Q_OBJECT

public:
    TrayHost(XConnection& x, MainQueue& queue, Log& log);

    /// Runs the block once there is a host; at once when there is one already.
    void whenAvailable(std::function<void()> block);
    /// An item for the host that is there, not shown yet. `clicked` may end it.
    std::unique_ptr<TrayIcon> makeIcon(const TrayIcon::Identity& identity,
                                       std::function<void(TrayIcon::Click)> clicked);

Q_SIGNALS:
    /// Another watcher than before, which knows of no item yet.
    void watcherAppeared();
    /// Another one has told of an item that it has none any more.
    void watcherDropped(const QString& item);

private Q_SLOTS:
    void hostRegistered();

private:
    enum class Kind { none, statusNotifier, embedding };

    void askWatcher();
    void watcherAnswered(bool hasHost);
    void lookForEmbedding();
    void becameAvailable(Kind kind);
    bool embeddingHasOwner() const;
    QDBusConnection takeConnection();
    void openConnection();

    XConnection& m_x;
    MainQueue& m_queue;
    Log& m_log;
    Kind m_kind = Kind::none;
    bool m_asked = false;
    bool m_reported = false;
    std::vector<std::function<void()>> m_waiting;
    Observation m_newTray;
    /// That no item uses. Opening one waits for the bus: a spare one is opened ahead.
    std::vector<QDBusConnection> m_connections{QDBusConnection::sessionBus()};
    int m_openedConnections = 0;
    int m_itemsMade = 0;
};

} // namespace tavro
