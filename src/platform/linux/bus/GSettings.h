#pragma once

#include "platform/process/Result.h"

#include <QDeadlineTimer>
#include <QStringList>
#include <QVariantMap>

#include <chrono>
#include <map>
#include <optional>
#include <string>

namespace tavro {

/// What the tool lists of a schema: lines "SCHEMA KEY VALUE", among them those of the schema's children.
QVariantMap parseSettings(const QString& schema, const QString& lines);

/// GSettings, through the tool `gsettings`: a process can be given up when the store does not answer, and a
/// schema that is not installed ends only that one, where the library would end ours. A question holds up the
/// main thread for a bounded time.
///
/// Values are what `parseGVariant` makes of them. Failures are what the tool says.
class GSettings {
public:
    static constexpr std::chrono::milliseconds standardBound{500};
    /// By the schema and the key.
    using Settings = std::map<QString, QVariantMap>;

    explicit GSettings(std::chrono::milliseconds bound = standardBound)
        : m_bound(bound) {}

    /// All of each schema; "SCHEMA:PATH" names one that has no path of its own. What is not installed, or not
    /// answered in time, is absent.
    Settings list(const QStringList& schemas, const QDeadlineTimer& deadline) const;
    Settings list(const QStringList& schemas) const { return list(schemas, deadline()); }
    Result<QVariant, std::string> get(const QString& schema, const QString& key) const;
    /// None on success.
    std::optional<std::string> set(const QString& schema, const QString& key, bool value) const;
    /// The end of a question that begins now, for one of several parts.
    QDeadlineTimer deadline() const { return QDeadlineTimer(m_bound); }

private:
    const std::chrono::milliseconds m_bound;
};

} // namespace tavro
