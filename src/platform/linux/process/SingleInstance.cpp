#include "platform/linux/process/SingleInstance.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace tavro {

namespace {
constexpr auto service = "com.vantrelo.TavroPRO";
constexpr auto path = "/com/vantrelo/TavroPRO";
constexpr int answerMilliseconds = 3000;
} // namespace

SingleInstance::Claim SingleInstance::claim() {
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return Claim::unknown;
    bus.registerObject(path, this, QDBusConnection::ExportAllSlots);
    if (bus.registerService(service))
        return Claim::first;
    auto call = QDBusMessage::createMethodCall(service, path, "org.freedesktop.Application", "Activate");
    call << QVariantMap();
    const auto answer = bus.call(call, QDBus::Block, answerMilliseconds);
    return answer.type() == QDBusMessage::ReplyMessage ? Claim::activatedOther : Claim::otherIsSilent;
}

void SingleInstance::Activate(const QVariantMap&) {
    if (m_activate)
        m_activate();
}

void SingleInstance::Open(const QStringList&, const QVariantMap& platformData) {
    Activate(platformData);
}

void SingleInstance::ActivateAction(const QString&, const QVariantList&, const QVariantMap& platformData) {
    Activate(platformData);
}

} // namespace tavro
