#pragma once

#include "platform/process/Result.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QSet>

#include <chrono>
#include <string>

namespace tavro {

/// Why a call on the bus gave no answer.
struct BusFailure {
    enum class Kind {
        /// Nobody has the service's name, and nobody can be started for it.
        absent,
        /// It has not answered in time. It gets the call when it comes to it.
        silent,
        /// It has answered with an error.
        refused
    };
    Kind kind = Kind::refused;
    /// The error's name on the bus, and what it says of what happened.
    QString name;
    std::string description;
};

using BusReply = Result<QVariantList, BusFailure>;

/// Calls on the session bus that hold up the main thread for a bounded time. A service that has let one call
/// run into the bound gets later ones as well, in their order, but nobody waits for it until it has answered
/// something.
class BoundedBus final : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds standardBound{500};

    explicit BoundedBus(QDBusConnection connection = QDBusConnection::sessionBus(),
                        std::chrono::milliseconds bound = standardBound)
        : m_connection(std::move(connection))
        , m_bound(bound) {}

    BusReply call(const QDBusMessage& message);
    BusReply call(const QString& service, const QString& path, const QString& interface,
                  const QString& method, const QVariantList& arguments = {});

    bool waitsFor(const QString& service) const { return !m_silent.contains(service); }
    std::chrono::milliseconds bound() const { return m_bound; }

Q_SIGNALS:
    /// A service that had let a call run into the bound answers again.
    void serviceAnswers();

private:
    void stopWaitingFor(const QString& service);

    QDBusConnection m_connection;
    const std::chrono::milliseconds m_bound;
    QSet<QString> m_silent;
};

} // namespace tavro
