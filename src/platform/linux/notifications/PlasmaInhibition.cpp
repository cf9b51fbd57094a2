#include "platform/linux/notifications/PlasmaInhibition.h"

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
    explicit Held(std::chrono::milliseconds bound)
        : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName), bound) {}
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held() { QDBusConnection::disconnectFromBus(connectionName); }

    std::optional<BusFailure> inhibit() {
        const auto reply = m_bus.call(service, path, service, "Inhibit",
                                      {"com.vantrelo.TavroPRO", "Presentation mode", QVariantMap()});
        if (!reply)
            return reply.error();
        m_cookie = reply->value(0).toUInt();
        return std::nullopt;
    }

    void giveBack() {
        if (m_cookie) // whatever comes of it, the end of the connection ends it as well
            (void)m_bus.call(service, path, service, "UnInhibit", {*m_cookie});
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
    if (m_held && m_bus.waitsFor(service))
        m_held->giveBack();
    m_held.reset();
    const auto isStillOn = this->isOn();
    if (!isStillOn)
        return isStillOn.error();
    if (*isStillOn)
        return "the user, or another program, keeps notifications back";
    return std::nullopt;
}

// A server that is known not to answer is not asked: an inhibition that it granted to a connection that had
// gone meanwhile would stay for ever.
std::optional<std::string> PlasmaInhibition::inhibit() {
    if (!m_bus.waitsFor(service))
        return isOn().error();
    auto held = std::make_unique<Held>(m_bus.bound());
    const auto failure = held->inhibit();
    if (!failure || failure->kind == BusFailure::Kind::silent) // then it may come later
        m_held = std::move(held);
    return failure ? std::optional(failure->description) : std::nullopt;
}

} // namespace tavro
