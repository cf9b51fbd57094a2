#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <functional>

namespace tavro {

/// Whether the desktop wants its programs to be dark, which GNOME says apart from its theme: to the portal
/// for settings (freedesktop.org XDG Desktop Portal). The portal is neither started nor waited for.
class ColorScheme final : public QObject {
    Q_OBJECT

public:
    explicit ColorScheme(std::function<void()> changed, QDBusConnection bus = QDBusConnection::sessionBus());

    /// No, as long as there is no portal.
    bool prefersDark() const { return m_prefersDark; }

private Q_SLOTS:
    void settingChanged(const QDBusMessage& change);

private:
    void ask();
    void set(const QVariant& value);

    const std::function<void()> m_changed;
    QDBusConnection m_bus;
    bool m_prefersDark = false;
};

} // namespace tavro
