#pragma once

#include "support/ChildProcess.h"
#include "support/desktop/XServer.h"

#include <csignal>
#include <optional>
#include <string>

/// A real notification server in the session, one at a time, and what its other clients and the user do with
/// it.
class NotificationServer {
public:
    struct Kind {
        const char* name;
        /// Runs it in the foreground.
        const char* command;
        /// Of its windows on the screen.
        const char* windowClass;
        /// Commands by which a user switches Do Not Disturb on, and asks for it.
        const char* userSwitchesOn;
        const char* isOn;
    };
    static const Kind xfce, dunst, mate;

    /// Takes the place of the server that runs. Returns when it has the name on the bus.
    NotificationServer(XServer& server, const Kind& kind);
    NotificationServer(const NotificationServer&) = delete;
    NotificationServer& operator=(const NotificationServer&) = delete;
    /// Ends it. The next one finds its setting as it was at first.
    ~NotificationServer();

    /// What some program sends now appears on the screen, some time after the server has taken it. It is gone
    /// afterwards.
    testing::AssertionResult showsANotification();
    /// What some program sends now is not there when the server has answered what was asked of it later.
    bool keepsANotificationBack();
    /// Notifications that it shows now, also such as it had kept back before.
    bool showsAny() const;
    void closeAll();
    void userSwitchesOn();
    /// What the server, or the store of its setting, says.
    bool isOn() const;
    void freeze() { m_process->signal(SIGSTOP); }
    void thaw() { m_process->signal(SIGCONT); }

private:
    void sendOne();
    /// Until the server has done what it was asked to.
    void settle() const;

    XServer& m_server;
    const Kind& m_kind;
    std::optional<ChildProcess> m_process;
};
