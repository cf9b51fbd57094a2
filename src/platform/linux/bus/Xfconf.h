#pragma once

#include "platform/linux/bus/BoundedBus.h"

#include <QVariantMap>

#include <optional>

namespace tavro {

/// XFCE's settings: properties such as "/do-not-disturb" in channels, which their service keeps.
class Xfconf {
public:
    explicit Xfconf(BoundedBus& bus)
        : m_bus(bus) {}

    /// Invalid for a property that nobody has set.
    Result<QVariant, BusFailure> get(const QString& channel, const QString& property);
    /// None on success.
    std::optional<BusFailure> set(const QString& channel, const QString& property, const QVariant& value);
    /// Every property of a channel; arrays are lists.
    Result<QVariantMap, BusFailure> list(const QString& channel);

private:
    BusReply call(const QString& method, const QVariantList& arguments);

    BoundedBus& m_bus;
};

} // namespace tavro
