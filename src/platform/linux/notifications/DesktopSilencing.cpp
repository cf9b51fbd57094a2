#include "platform/linux/notifications/DesktopSilencing.h"

#include "platform/linux/notifications/BubbleSwitch.h"
#include "platform/linux/notifications/BusNotificationSwitches.h"
#include "platform/linux/notifications/LxqtNotificationSwitch.h"
#include "platform/linux/notifications/PlasmaInhibition.h"
#include "platform/linux/notifications/SettingsNotificationSwitch.h"
#include "platform/process/Log.h"

#include <utility>

namespace tavro {

namespace {

constexpr auto service = "org.freedesktop.Notifications";

template <class Switch>
std::unique_ptr<NotificationSwitch> onBus(BoundedBus& bus, const GSettings&) {
    return std::make_unique<Switch>(bus);
}

std::unique_ptr<NotificationSwitch> lxqt(BoundedBus&, const GSettings&) {
    return std::make_unique<LxqtNotificationSwitch>();
}

// These two keys say what is shown, not what is held back.
std::unique_ptr<NotificationSwitch> cinnamon(BoundedBus&, const GSettings& settings) {
    return std::make_unique<SettingsNotificationSwitch>(
        settings, SettingsNotificationSwitch::Key{"org.cinnamon.desktop.notifications",
                                                  "display-notifications", false});
}

std::unique_ptr<NotificationSwitch> gnome(BoundedBus&, const GSettings& settings) {
    return std::make_unique<SettingsNotificationSwitch>(
        settings, SettingsNotificationSwitch::Key{"org.gnome.desktop.notifications", "show-banners", false});
}

std::unique_ptr<NotificationSwitch> mate(BoundedBus&, const GSettings& settings) {
    return std::make_unique<SettingsNotificationSwitch>(
        settings, SettingsNotificationSwitch::Key{"org.mate.NotificationDaemon", "do-not-disturb", true});
}

/// By what servers answer to GetServerInformation. "Notification Daemon" is what both MATE and GNOME
/// Flashback call theirs, and only the former's has a switch.
struct Server {
    const char* name;
    const char* vendor; // empty where the name says it
    std::unique_ptr<NotificationSwitch> (*make)(BoundedBus&, const GSettings&);
};

constexpr Server servers[] = {
    {"Xfce Notify Daemon", "", &onBus<XfceNotificationSwitch>},
    {"dunst", "", &onBus<DunstNotificationSwitch>},
    {"gnome-shell", "", &gnome},
    {"cinnamon", "", &cinnamon},
    {"lxqt-notificationd", "", &lxqt},
    {"Plasma", "", &onBus<PlasmaInhibition>},
    {"Notification Daemon", "MATE", &mate},
    {"mako", "", &onBus<MakoNotificationSwitch>},
    {"SwayNotificationCenter", "", &onBus<SwayNotificationSwitch>},
};

} // namespace

std::optional<bool> DesktopSilencing::isOn() {
    auto* server = serverSwitch();
    if (!server)
        return std::nullopt;
    const auto state = server->isOn();
    if (!state) {
        report(state.error());
        return std::nullopt;
    }
    m_reported.clear();
    return *state;
}

bool DesktopSilencing::setOn(bool isOn) {
    m_owed = isOn;
    auto* server = serverSwitch();
    if (!server)
        return false;
    if (const auto failure = server->setOn(isOn)) {
        report(*failure);
        return false;
    }
    m_owed.reset();
    m_reported.clear();
    return true;
}

void DesktopSilencing::catchUp() {
    if (m_owed)
        setOn(*m_owed);
}

NotificationSwitch* DesktopSilencing::serverSwitch() {
    if (m_switch && owner() == m_owner)
        return m_switch.get();
    m_switch.reset();
    auto identified = identify();
    if (!identified) {
        report(identified.error());
        return nullptr;
    }
    m_switch = std::move(identified).value();
    m_owner = owner();
    return m_switch.get();
}

// A server that is only started when it is needed is started by this: else it would come with the first
// notification, and show it.
Result<std::unique_ptr<NotificationSwitch>, std::string> DesktopSilencing::identify() {
    const auto reply = m_bus.call(service, "/org/freedesktop/Notifications", service, "GetServerInformation");
    if (!reply)
        return reply.error().kind == BusFailure::Kind::absent ? "no notification server is running"
                                                              : reply.error().description;
    const auto name = reply->value(0).toString();
    const auto vendor = reply->value(1).toString();
    for (const auto& server : servers)
        if (name == server.name && (vendor == server.vendor || !*server.vendor))
            return server.make(m_bus, m_settings);
    return std::unique_ptr<NotificationSwitch>(std::make_unique<BubbleSwitch>(m_keepBubblesAway));
}

// The unique name of its connection, which another server, or the same one started anew, does not share.
QString DesktopSilencing::owner() {
    const auto reply = m_bus.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                  "GetNameOwner", {service});
    return reply ? reply->value(0).toString() : QString();
}

void DesktopSilencing::report(const std::string& why) {
    if (std::exchange(m_reported, why) != why)
        m_log.diagnose("Do Not Disturb cannot be switched: " + why);
}

} // namespace tavro
