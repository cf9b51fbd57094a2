#include "NotificationServer.h"

#include "support/desktop/Session.h"

#include <csignal>
#include <cstdlib>
#include <unistd.h>

const NotificationServer::Kind NotificationServer::xfce{
    "xfce4-notifyd",
    "exec $(sed -n s/^Exec=//p /usr/share/dbus-1/services/org.xfce.xfce4-notifyd.Notifications.service)",
    "xfce4-notifyd",
    "xfconf-query -c xfce4-notifyd -p /do-not-disturb -n -t bool -s true",
    "test $(xfconf-query -c xfce4-notifyd -p /do-not-disturb) = true",
};

const NotificationServer::Kind NotificationServer::dunst{
    "dunst",
    "exec dunst",
    "Dunst",
    "gdbus call --session --dest org.freedesktop.Notifications --object-path /org/freedesktop/Notifications "
    "--method org.freedesktop.DBus.Properties.Set org.dunstproject.cmd0 paused '<true>' >/dev/null",
    "gdbus call --session --dest org.freedesktop.Notifications --object-path /org/freedesktop/Notifications "
    "--method org.freedesktop.DBus.Properties.Get org.dunstproject.cmd0 paused | grep -q true",
};

const NotificationServer::Kind NotificationServer::mate{
    "mate-notification-daemon",
    "exec /usr/lib/mate-notification-daemon/mate-notification-daemon",
    "mate-notification-daemon",
    "gsettings set org.mate.NotificationDaemon do-not-disturb true",
    "test $(gsettings get org.mate.NotificationDaemon do-not-disturb) = true",
};

namespace {

constexpr auto service = "org.freedesktop.Notifications /org/freedesktop/Notifications";

bool nameHasOwner() {
    return Session::run(
        "dbus-send --session --print-reply --dest=org.freedesktop.DBus / "
        "org.freedesktop.DBus.GetNameOwner string:org.freedesktop.Notifications >/dev/null 2>&1");
}

bool call(const std::string& method) {
    return Session::run(std::string("dbus-send --session --print-reply --reply-timeout=30000 --dest=") +
                        service + " org.freedesktop.Notifications." + method + " >/dev/null");
}

} // namespace

NotificationServer::NotificationServer(XServer& server, const Kind& kind)
    : m_server(server)
    , m_kind(kind) {
    ::setenv("GSETTINGS_BACKEND", "keyfile", true); // which several processes share, other than the session's
    Session::signal("notifyd", SIGTERM);
    EXPECT_TRUE(m_server.eventually("nobody for notifications", [] { return !nameHasOwner(); }));
    m_process.emplace(std::vector<std::string>{"sh", "-c", kind.command}, STDOUT_FILENO, STDERR_FILENO);
    EXPECT_TRUE(m_server.eventually(std::string("a running ") + kind.name, nameHasOwner));
}

NotificationServer::~NotificationServer() {
    m_process.reset();
    Session::run("xfconf-query -c xfce4-notifyd -p /do-not-disturb -r 2>/dev/null");
    Session::run("gsettings reset org.mate.NotificationDaemon do-not-disturb");
}

testing::AssertionResult NotificationServer::showsANotification() {
    sendOne();
    const auto shows = m_server.eventually("a notification", [this] { return showsAny(); });
    closeAll();
    return shows;
}

bool NotificationServer::keepsANotificationBack() {
    sendOne();
    return !showsAny();
}

void NotificationServer::sendOne() {
    EXPECT_FALSE(showsAny());
    EXPECT_TRUE(Session::run("notify-send --expire-time=60000 'Anna - Chat' 'Where are you?'"));
    settle();
}

bool NotificationServer::showsAny() const {
    constexpr int smallest = 20; // servers keep tiny windows that show nothing
    for (const auto window : m_server.topLevelWindows())
        if (m_server.isViewable(window) && m_server.place(window).width > smallest &&
            m_server.text(window, "WM_CLASS").starts_with(m_kind.windowClass))
            return true;
    return false;
}

// Servers number notifications from 1 on.
void NotificationServer::closeAll() {
    for (int id = 1; id <= 20; ++id)
        call("CloseNotification uint32:" + std::to_string(id));
    EXPECT_TRUE(m_server.eventually("no notification on the screen", [this] { return !showsAny(); }));
}

// It answers one question after the other, and does in between what it had put off until it would be idle.
void NotificationServer::settle() const {
    for (int step = 0; step < 5; ++step)
        EXPECT_TRUE(call("GetCapabilities"));
}

void NotificationServer::userSwitchesOn() {
    EXPECT_TRUE(Session::run(m_kind.userSwitchesOn));
    EXPECT_TRUE(m_server.eventually("Do Not Disturb of the user's", [this] { return isOn(); }));
    settle();
}

bool NotificationServer::isOn() const {
    return Session::run(std::string(m_kind.isOn) + " 2>/dev/null");
}
