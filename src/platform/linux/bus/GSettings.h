#pragma once

#include "platform/process/Result.h"

#include <QDeadlineTimer>
#include <QStringList>
#include <QVariantMap>

#include <map>
#include <optional>
#include <string>

namespace tavro {

/// One question to GSettings, through the tool `gsettings`: a process can be given up when the store does not
/// answer, and a schema that is not installed ends only that one, where the library would end ours. All that
/// one object is asked holds up the main thread for one bound; make another for the next question.
///
/// Values are what `parseGVariant` makes of them. Failures are one line that says why.
class GSettings {
public:
    static constexpr int milliseconds = 500;

    /// The settings by their keys, for each schema; "SCHEMA:PATH" names one that has no path of its own. What
    /// is not installed, or not told in time, is absent.
    std::map<QString, QVariantMap> list(const QStringList& schemas);
    Result<QVariant, std::string> get(const QString& schema, const QString& key);
    /// None on success.
    std::optional<std::string> set(const QString& schema, const QString& key, bool value);

private:
    QDeadlineTimer m_deadline{milliseconds};
};

} // namespace tavro
