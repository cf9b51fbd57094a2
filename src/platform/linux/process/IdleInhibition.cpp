#include "platform/linux/process/IdleInhibition.h"

#include "platform/linux/bus/Send.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <iterator>

namespace tavro {

namespace {

const auto application = QStringLiteral("com.vantrelo.TavroPRO");
const auto reason = QStringLiteral("Presentation mode");
/// GNOME's flags say what is inhibited: 8 is that the session counts as idle, others are its end or sleep.
constexpr quint32 noWindow = 0, inhibitIdle = 8;

/// In the order in which they are asked.
const struct {
    const char *name, *path, *release;
    QVariantList arguments;
} services[] = {
    {"org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver", "UnInhibit", {application, reason}},
    {"org.gnome.SessionManager",
     "/org/gnome/SessionManager",
     "Uninhibit",
     {application, noWindow, reason, inhibitIdle}},
};

} // namespace

void IdleInhibition::prevent() {
    if (std::exchange(m_isWanted, true))
        return;
    m_suspendServer(true);
    if (!m_isAsking && !m_held)
        ask(0);
}

void IdleInhibition::allow() {
    if (!std::exchange(m_isWanted, false))
        return;
    m_suspendServer(false);
    if (m_held)
        release();
}

void IdleInhibition::ask(std::size_t service) {
    m_isAsking = service < std::size(services);
    if (!m_isAsking)
        return;
    const auto& [name, path, releaseMethod, arguments] = services[service];
    auto call = QDBusMessage::createMethodCall(name, path, name, "Inhibit");
    call.setArguments(arguments);
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, service](auto* finished) {
        finished->deleteLater();
        const QDBusPendingReply<std::uint32_t> reply = *finished;
        if (reply.isError())
            ask(service + 1);
        else
            answered(service, reply.value());
    });
}

// The presentation may be over by now, and even another one have begun.
void IdleInhibition::answered(std::size_t service, std::uint32_t cookie) {
    m_isAsking = false;
    m_held = {service, cookie};
    if (!m_isWanted)
        release();
}

void IdleInhibition::release() {
    const auto& [name, path, releaseMethod, arguments] = services[m_held->service];
    send(QDBusConnection::sessionBus(), name, path, name, releaseMethod, {m_held->cookie});
    m_held.reset();
}

} // namespace tavro
