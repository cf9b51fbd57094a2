#include "platform/linux/bus/BoundedBus.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>

#include <limits>

namespace tavro {

namespace {

BusFailure silence(const QString& service) {
    return {BusFailure::Kind::silent, {}, service.toStdString() + " does not answer"};
}

BusFailure failureOf(const QDBusMessage& reply, const QString& service) {
    const QDBusError error(reply);
    switch (error.type()) {
        // The bus also says this of a service that has ended without an answer.
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return silence(service);
    case QDBusError::ServiceUnknown:
    case QDBusError::Disconnected:
        return {BusFailure::Kind::absent, error.name(), error.message().toStdString()};
    default:
        return {BusFailure::Kind::refused, error.name(), error.message().toStdString()};
    }
}

} // namespace

BusReply BoundedBus::call(const QString& service, const QString& path, const QString& interface,
                          const QString& method, const QVariantList& arguments) {
    auto message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    return call(message);
}

BusReply BoundedBus::call(const QDBusMessage& message) {
    const auto service = message.service();
    if (!waitsFor(service)) {
        // It gets the call nevertheless, after those before it.
        m_connection.send(message);
        return silence(service);
    }
    // Without the event loop: nothing else of the program runs inside the call.
    const auto reply = m_connection.call(message, QDBus::Block, static_cast<int>(m_bound.count()));
    if (reply.type() == QDBusMessage::ReplyMessage)
        return reply.arguments();
    const auto failure = failureOf(reply, service);
    if (failure.kind == BusFailure::Kind::silent)
        stopWaitingFor(service);
    return failure;
}

void BoundedBus::stopWaitingFor(const QString& service) {
    m_silent.insert(service);
    // Bus libraries answer this themselves, at whatever path, when their program reads its messages again.
    const auto question = QDBusMessage::createMethodCall(service, "/", "org.freedesktop.DBus.Peer", "Ping");
    auto* answer =
        new QDBusPendingCallWatcher(m_connection.asyncCall(question, std::numeric_limits<int>::max()), this);
    // Any answer will do, and the bus answers for a service that has gone.
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, service, answer] {
        m_silent.remove(service);
        answer->deleteLater();
        Q_EMIT serviceAnswers();
    });
}

} // namespace tavro
