#include "platform/linux/menubar/TrayHost.h"

#include "platform/process/Log.h"
#include "platform/process/MainQueue.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

namespace tavro {

namespace {
constexpr auto watcherService = "org.kde.StatusNotifierWatcher";
constexpr auto watcherPath = "/StatusNotifierWatcher";
/// How long a panel that takes embedded icons may need until it has registered as a host as well.
constexpr MainQueue::Duration embeddingGrace{2.0};
} // namespace

TrayHost::TrayHost(XConnection& x, MainQueue& queue, Log& log)
    : m_x(x)
    , m_queue(queue)
    , m_log(log) {}

void TrayHost::whenAvailable(std::function<void()> block) {
    if (m_isAvailable)
        return block();
    m_waiting.push_back(std::move(block));
    if (std::exchange(m_asked, true))
        return;
    auto bus = QDBusConnection::sessionBus();
    auto* watcher =
        new QDBusServiceWatcher(watcherService, bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &TrayHost::askWatcher);
    bus.connect(watcherService, watcherPath, watcherService, "StatusNotifierHostRegistered", this,
                SLOT(hostRegistered()));
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

void TrayHost::watcherAnswered(bool hasHost) {
    if (hasHost)
        return becameAvailable();
    if (embeddingHasOwner())
        return lookForEmbedding();
    if (!m_isAvailable && !std::exchange(m_reported, true))
        m_log.diagnose("The desktop has no status bar yet; the status item appears when one does");
}

void TrayHost::hostRegistered() {
    becameAvailable();
}

void TrayHost::lookForEmbedding() {
    m_queue.asyncAfter(embeddingGrace, [this] {
        if (embeddingHasOwner())
            becameAvailable();
    });
}

bool TrayHost::embeddingHasOwner() const {
    const XReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_x.raw(), xcb_get_selection_owner(m_x.raw(), m_x.atoms().netSystemTray), nullptr));
    m_x.deliverQueuedEvents();
    return reply && reply->owner != XCB_NONE;
}

void TrayHost::becameAvailable() {
    if (std::exchange(m_isAvailable, true))
        return;
    m_newTray = {};
    for (const auto& block : std::exchange(m_waiting, {}))
        block();
}

} // namespace tavro
