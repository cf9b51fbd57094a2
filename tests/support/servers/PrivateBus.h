#pragma once

#include "support/TemporaryFolder.h"

#include <QProcess>

#include <csignal>
#include <fstream>
#include <sys/prctl.h>

/// Puts a session bus of our own, which starts no services, in the place of the user's. To be called before
/// anything asks for the bus: a process looks for it once.
inline void providePrivateBus() {
    static const TemporaryFolder folder;
    static QProcess daemon;
    if (daemon.state() == QProcess::Running)
        return;
    const auto configuration = folder.path() / "bus.conf";
    std::ofstream(configuration) << "<busconfig><type>session</type><listen>unix:dir="
                                 << folder.path().string()
                                 << "</listen><policy context='default'><allow send_destination='*'/>"
                                    "<allow eavesdrop='true'/><allow own='*'/></policy></busconfig>";
    daemon.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    daemon.start("dbus-daemon",
                 {"--nofork", "--print-address", "--config-file=" + QString::fromStdString(configuration)});
    if (!daemon.waitForReadyRead())
        throw std::runtime_error("dbus-daemon does not start");
    qputenv("DBUS_SESSION_BUS_ADDRESS", daemon.readLine().trimmed());
}
