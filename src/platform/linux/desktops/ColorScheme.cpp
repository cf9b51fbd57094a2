#include "platform/linux/desktops/ColorScheme.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

#include <utility>

namespace tavro {

namespace {

constexpr auto portal = "org.freedesktop.portal.Desktop";
constexpr auto path = "/org/freedesktop/portal/desktop";
constexpr auto interface = "org.freedesktop.portal.Settings";
constexpr auto appearance = "org.freedesktop.appearance";
constexpr auto colorScheme = "color-scheme";

} // namespace

ColorScheme::ColorScheme(std::function<void()> changed, QDBusConnection bus)
    : m_changed(std::move(changed))
    , m_bus(std::move(bus)) {
    m_bus.connect({}, path, interface, "SettingChanged", this, SLOT(settingChanged(QDBusMessage)));
    auto* watcher = new QDBusServiceWatcher(portal, m_bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] { ask(); });
    ask();
}

void ColorScheme::ask() {
    auto question = QDBusMessage::createMethodCall(portal, path, interface, "Read");
    question << appearance << colorScheme;
    question.setAutoStartService(false);
    auto* call = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        call->deleteLater();
        if (const QDBusPendingReply<QDBusVariant> reply = *call; reply.isValid())
            set(reply.value().variant());
    });
}

void ColorScheme::settingChanged(const QDBusMessage& change) {
    if (const auto said = change.arguments();
        said.size() == 3 && said[0].toString() == appearance && said[1].toString() == colorScheme)
        set(said[2]);
}

// Who is asked may wrap the value once more than who tells.
void ColorScheme::set(const QVariant& value) {
    if (value.metaType() == QMetaType::fromType<QDBusVariant>())
        return set(value.value<QDBusVariant>().variant());
    constexpr uint preferDark = 1;
    if (std::exchange(m_prefersDark, value.toUInt() == preferDark) != m_prefersDark)
        m_changed();
}

} // namespace tavro
