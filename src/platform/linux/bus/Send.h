#pragma once

#include <QDBusConnection>
#include <QDBusMessage>

namespace tavro {

/// The message bus itself (freedesktop.org D-Bus).
constexpr auto busService = "org.freedesktop.DBus";
constexpr auto busPath = "/org/freedesktop/DBus";

/// Sends a call whose answer nobody waits for.
inline void send(const QDBusConnection& bus, const QString& service, const QString& path,
                 const QString& interface, const QString& method, const QVariantList& arguments) {
    auto message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    bus.send(message);
}

} // namespace tavro
