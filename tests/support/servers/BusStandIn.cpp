#include "BusStandIn.h"

BusStandIn::BusStandIn(const QStringList& services)
    : m_services(services) {
    moveToThread(&m_thread);
    m_thread.start();
    auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "stand-in");
    bus.registerVirtualObject("/", this, QDBusConnection::SubPath);
    for (const auto& service : m_services)
        if (!bus.registerService(service))
            qFatal("The bus refuses a name to a stand-in");
}

BusStandIn::~BusStandIn() {
    for (const auto& service : m_services) // which the next one may want at once
        QDBusConnection("stand-in").unregisterService(service);
    QDBusConnection::disconnectFromBus("stand-in");
    m_thread.quit();
    m_thread.wait();
}

void BusStandIn::setSilent(bool isSilent) {
    m_isSilent = isSilent;
    m_isSilent.notify_all();
}

bool BusStandIn::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    auto call = message.interface() + '.' + message.member();
    for (const auto& argument : message.arguments())
        if (argument.userType() == QMetaType::QString)
            call += ' ' + argument.toString();
    m_isSilent.wait(true);
    const auto method = methods.find(call);
    connection.send(method == methods.end()
                        ? message.createErrorReply(QDBusError::UnknownMethod, "There is no\n" + call)
                        : message.createReply(method->second(message)));
    return true;
}
