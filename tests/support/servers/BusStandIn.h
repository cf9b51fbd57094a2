#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QStringList>
#include <QThread>

#include <atomic>
#include <functional>
#include <map>

/// A value of type "v".
inline QVariant busVariant(const QVariant& value) {
    return QVariant::fromValue(QDBusVariant(value));
}

/// Services on the session bus, on a thread and a connection of their own, as another program's would be.
class BusStandIn : public QDBusVirtualObject {
public:
    using Method = std::function<QVariantList(const QDBusMessage&)>;

    explicit BusStandIn(const QStringList& services);
    ~BusStandIn() override;

    /// What is done for a call, by its interface, its method and those arguments that are texts:
    /// "org.freedesktop.DBus.Properties.Get org.example paused". All else is refused.
    std::map<QString, Method> methods;
    /// As a stopped process: it answers later, but in the end.
    void setSilent(bool isSilent);

private:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

    const QStringList m_services;
    std::atomic<bool> m_isSilent = false;
    QThread m_thread;
};
