#include "platform/linux/bus/Xfconf.h"

#include <QDBusArgument>
#include <QDBusVariant>

namespace tavro {

Result<QVariant, BusFailure> Xfconf::get(const QString& channel, const QString& property) {
    const auto reply = call("GetProperty", {channel, property});
    if (reply)
        return reply->value(0).value<QDBusVariant>().variant();
    // A property that has never been set is not stored; programs know their defaults themselves.
    if (reply.error().name.endsWith("PropertyNotFound"))
        return QVariant();
    return reply.error();
}

std::optional<BusFailure> Xfconf::set(const QString& channel, const QString& property,
                                      const QVariant& value) {
    const auto reply = call("SetProperty", {channel, property, QVariant::fromValue(QDBusVariant(value))});
    return reply ? std::nullopt : std::optional(reply.error());
}

Result<QVariantMap, BusFailure> Xfconf::list(const QString& channel) {
    const auto reply = call("GetAllProperties", {channel, "/"});
    if (!reply)
        return reply.error();
    auto properties = qdbus_cast<QVariantMap>(reply->value(0));
    for (auto& value : properties)
        // The toolkit leaves what is nested deeper packed.
        if (value.userType() == qMetaTypeId<QDBusArgument>())
            value = qdbus_cast<QVariantList>(value);
    return properties;
}

BusReply Xfconf::call(const QString& method, const QVariantList& arguments) {
    return m_bus.call("org.xfce.Xfconf", "/org/xfce/Xfconf", "org.xfce.Xfconf", method, arguments);
}

} // namespace tavro
