#include "platform/linux/menubar/TrayHost.h"

#include "platform/linux/menubar/EmbeddedTrayIcon.h"
#include "platform/linux/menubar/StatusNotifierItem.h"
#include "platform/process/Log.h"
#include "platform/process/MainQueue.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

namespace tavro {

namespace {
constexpr auto watcherService = StatusNotifierItem::watcherService;
constexpr auto watcherPath = StatusNotifierItem::watcherPath;
/// How long a panel that takes embedded icons may need until it has registered as a host as well.
constexpr MainQueue::Duration embeddingGrace{2.0};
} // namespace

TrayHost::TrayHost(XConnection& x, MainQueue& queue, Log& log)
    : m_x(x)
    , m_queue(queue)
    , m_log(log) {}

void TrayHost::whenAvailable(std::function<void()> block) {
    if (m_kind != Kind::none)
        return block();
    m_waiting.push_back(std::move(block));
    if (std::exchange(m_asked, true))
        return;
    auto bus = QDBusConnection::sessionBus();
    auto* watcher =
        new QDBusServiceWatcher(watcherService, bus, QDBusServiceWatcher::WatchForRegistration, this);
    // A panel that restarts brings another watcher, which knows of no item.
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &TrayHost::askWatcher);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &TrayHost::watcherAppeared);
    bus.connect(watcherService, watcherPath, watcherService, "StatusNotifierHostRegistered", this,
                SLOT(hostRegistered()));
    bus.connect(watcherService, watcherPath, watcherService, "StatusNotifierItemUnregistered", this,
                SIGNAL(watcherDropped(QString)));
    m_newTray = m_x.onNewManager(m_x.atoms().netSystemTray, [this] { lookForEmbedding(); });
    askWatcher();
}

void TrayHost::askWatcher() {
    auto question =
        QDBusMessage::createMethodCall(watcherService, watcherPath, "org.freedesktop.DBus.Properties", "Get");
    question << watcherService << "IsStatusNotifierHostRegistered";
    auto* call = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        const QDBusPendingReply<QDBusVariant> reply = *call;
        call->deleteLater();
        watcherAnswered(reply.isValid() && reply.value().variant().toBool());
    });
}

// A watcher only keeps the list of items: without a host nobody draws them.
void TrayHost::watcherAnswered(bool hasHost) {
    if (hasHost)
        return becameAvailable(Kind::statusNotifier);
    if (embeddingHasOwner())
        return lookForEmbedding();
    if (m_kind == Kind::none && !std::exchange(m_reported, true))
        m_log.diagnose("The desktop has no status bar yet; the status item appears when one does");
}

void TrayHost::hostRegistered() {
    becameAvailable(Kind::statusNotifier);
}

void TrayHost::lookForEmbedding() {
    m_queue.asyncAfter(embeddingGrace, [this] {
        if (embeddingHasOwner())
            becameAvailable(Kind::embedding);
    });
}

bool TrayHost::embeddingHasOwner() const {
    const XReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_x.raw(), xcb_get_selection_owner(m_x.raw(), m_x.atoms().netSystemTray), nullptr));
    return reply && reply->owner != XCB_NONE;
}

void TrayHost::becameAvailable(Kind kind) {
    if (m_kind != Kind::none)
        return;
    m_kind = kind;
    m_newTray = {};
    for (const auto& block : std::exchange(m_waiting, {}))
        block();
    if (kind == Kind::statusNotifier)
        m_queue.async([this] { openConnection(); });
}

std::unique_ptr<TrayIcon> TrayHost::makeIcon(const TrayIcon::Identity& identity,
                                             std::function<void(TrayIcon::Click)> clicked) {
    if (m_kind == Kind::embedding)
        return std::make_unique<EmbeddedTrayIcon>(identity, std::move(clicked));
    const auto bus = takeConnection();
    const auto name = QStringLiteral("org.kde.StatusNotifierItem-%1-%2")
                          .arg(QCoreApplication::applicationPid())
                          .arg(++m_itemsMade);
    auto item = std::make_unique<StatusNotifierItem>(bus, name, identity, std::move(clicked),
                                                     [this, bus] { m_connections.push_back(bus); });
    connect(this, &TrayHost::watcherAppeared, item.get(), &StatusNotifierItem::registerWithWatcher);
    connect(this, &TrayHost::watcherDropped, item.get(), &StatusNotifierItem::watcherDropped);
    return item;
}

// Watchers know an item by its bus name and forget it with that alone, so each needs one, and since the
// item's path is given, a connection besides.
QDBusConnection TrayHost::takeConnection() {
    if (m_connections.empty())
        openConnection();
    const auto taken = m_connections.back();
    m_connections.pop_back();
    return taken;
}

void TrayHost::openConnection() {
    const auto name = QStringLiteral("tavropro-tray-%1").arg(++m_openedConnections);
    m_connections.push_back(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name));
}

} // namespace tavro
