#pragma once

#include <QObject>
#include <QStringList>
#include <QVariant>

#include <functional>

namespace tavro {

/// One program for each session: the first owns the name on the session bus and offers the interface
/// `org.freedesktop.Application` (XDG desktop entries, D-Bus activation) there.
class SingleInstance final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Claim {
        first,
        /// Another process has the name; it has been activated.
        activatedOther,
        /// Another process has the name and did not answer in time.
        otherIsSilent,
        /// There is no session bus to find the other one by.
        unknown,
    };

    /// Once, before anything else of the product starts.
    Claim claim();
    /// What to do when the program is started again.
    void onActivate(std::function<void()> block) { m_activate = std::move(block); }

public Q_SLOTS:
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& locations, const QVariantMap& platformData);
    void ActivateAction(const QString& name, const QVariantList& parameter, const QVariantMap& platformData);

private:
    std::function<void()> m_activate;
};

} // namespace tavro
