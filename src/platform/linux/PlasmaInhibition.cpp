#include "platform/linux/PlasmaInhibition.h"

#include <QDBusVariant>

namespace tavro {

namespace {

constexpr auto service = "org.freedesktop.Notifications";
constexpr auto path = "/org/freedesktop/Notifications";
constexpr auto connectionName = "tavropro-inhibition";

} // namespace

/// A connection, and the inhibition that was asked for on it.
class PlasmaInhibition::Held {
public:
    Held()
        : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName)) {}
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held() {
        if (m_cookie) // whatever comes of it, the end of the connection ends it as well
            (void)m_bus.call(service, path, service, "UnInhibit", {*m_cookie});
        QDBusConnection::disconnectFromBus(connectionName);
    }

    std::optional<std::string> inhibit() {
        const auto reply = m_bus.call(service, path, service, "Inhibit",
                                      {"com.vantrelo.TavroPRO", "Presentation mode", QVariantMap()});
        if (!reply)
            return reply.error().description;
        m_cookie = reply->value(0).toUInt();
        return std::nullopt;
    }

private:
    BoundedBus m_bus;
    std::optional<unsigned> m_cookie;
};

PlasmaInhibition::PlasmaInhibition(BoundedBus& bus)
    : m_bus(bus) {}

PlasmaInhibition::~PlasmaInhibition() = default;

Result<bool, std::string> PlasmaInhibition::isOn() {
    const auto reply =
        m_bus.call(service, path, "org.freedesktop.DBus.Properties", "Get", {service, "Inhibited"});
    if (!reply)
        return reply.error().description;
    return reply->value(0).value<QDBusVariant>().variant().toBool();
}

std::optional<std::string> PlasmaInhibition::setOn(bool isOn) {
    if (isOn)
        return m_held ? std::nullopt : inhibit();
    m_held.reset();
    const auto isStillOn = this->isOn();
    if (!isStillOn)
        return isStillOn.error();
    if (*isStillOn)
        return "the user, or another program, keeps notifications back";
    return std::nullopt;
}

std::optional<std::string> PlasmaInhibition::inhibit() {
    auto held = std::make_unique<Held>();
    if (auto failure = held->inhibit())
        return failure;
    m_held = std::move(held);
    return std::nullopt;
}

} // namespace tavro
