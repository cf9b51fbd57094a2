#include "platform/linux/notifications/BusNotificationSwitches.h"

#include <QDBusArgument>
#include <QDBusVariant>

namespace tavro {

namespace {

constexpr auto properties = "org.freedesktop.DBus.Properties";
constexpr auto makoMode = "do-not-disturb";
constexpr auto xfceChannel = "xfce4-notifyd";
constexpr auto xfceProperty = "/do-not-disturb";

Result<bool, std::string> boolean(const QVariant& value) {
    if (value.metaType() != QMetaType::fromType<bool>())
        return std::string("the notification server's state is not a Boolean");
    return value.toBool();
}

/// A Boolean, plain or in a variant.
Result<bool, std::string> boolean(const BusReply& reply) {
    if (!reply)
        return reply.error().description;
    const auto value = reply->value(0);
    return boolean(value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value);
}

std::optional<std::string> failure(const BusReply& reply) {
    return reply ? std::nullopt : std::optional(reply.error().description);
}

QVariant variant(bool value) {
    return QVariant::fromValue(QDBusVariant(value));
}

BusReply callDunst(BoundedBus& bus, const char* method, const QVariantList& value = {}) {
    return bus.call("org.freedesktop.Notifications", "/org/freedesktop/Notifications", properties, method,
                    QVariantList{"org.dunstproject.cmd0", "paused"} + value);
}

BusReply callMako(BoundedBus& bus, const char* method, const QVariantList& arguments = {}) {
    return bus.call("fr.emersion.Mako", "/fr/emersion/Mako", "fr.emersion.Mako", method, arguments);
}

BusReply callSway(BoundedBus& bus, const char* method, const QVariantList& arguments = {}) {
    return bus.call("org.erikreider.swaync.cc", "/org/erikreider/swaync/cc", "org.erikreider.swaync.cc",
                    method, arguments);
}

} // namespace

Result<bool, std::string> XfceNotificationSwitch::isOn() {
    const auto value = m_xfconf.get(xfceChannel, xfceProperty);
    if (!value)
        return value.error().description;
    return value->isValid() ? boolean(*value) : false;
}

std::optional<std::string> XfceNotificationSwitch::setOn(bool isOn) {
    const auto failure = m_xfconf.set(xfceChannel, xfceProperty, isOn);
    return failure ? std::optional(failure->description) : std::nullopt;
}

Result<bool, std::string> DunstNotificationSwitch::isOn() {
    return boolean(callDunst(m_bus, "Get"));
}

std::optional<std::string> DunstNotificationSwitch::setOn(bool isOn) {
    return failure(callDunst(m_bus, "Set", {variant(isOn)}));
}

Result<QStringList, std::string> MakoNotificationSwitch::modes() {
    const auto reply = callMako(m_bus, "ListModes");
    if (!reply)
        return reply.error().description;
    return reply->value(0).toStringList();
}

Result<bool, std::string> MakoNotificationSwitch::isOn() {
    const auto inForce = modes();
    if (!inForce)
        return inForce.error();
    return inForce->contains(makoMode);
}

std::optional<std::string> MakoNotificationSwitch::setOn(bool isOn) {
    const auto before = modes();
    if (!before)
        return before.error();
    // The server takes the whole list: the modes that the user has switched on have to stay in it.
    auto inForce = *before;
    inForce.removeAll(makoMode);
    if (isOn)
        inForce.append(makoMode);
    return failure(callMako(m_bus, "SetModes", {inForce}));
}

Result<bool, std::string> SwayNotificationSwitch::isOn() {
    return boolean(callSway(m_bus, "GetDnd"));
}

std::optional<std::string> SwayNotificationSwitch::setOn(bool isOn) {
    return failure(callSway(m_bus, "SetDnd", {isOn}));
}

} // namespace tavro
