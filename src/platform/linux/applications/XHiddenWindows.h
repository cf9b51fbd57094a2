#pragma once

#include "platform/linux/applications/HiddenWindows.h"
#include "platform/linux/process/OncePerTurn.h"
#include "platform/linux/windows/DesktopSnapshot.h"
#include "platform/linux/x11/WindowManagerSync.h"

#include <array>
#include <memory>
#include <set>
#include <string>

namespace tavro {

class Log;
class MainQueue;

/// The hidden windows of the X server: passes to the model what the server reports, and sends what it asks
/// for.
class XHiddenWindows : public std::enable_shared_from_this<XHiddenWindows> {
public:
    XHiddenWindows(XConnection& x, DesktopSnapshots& snapshots, WindowManagerSync& windowManager,
                   MainQueue& queue, Log& log);

    /// Reads the windows anew; the list holds for the rest of this turn of the main queue.
    std::shared_ptr<const ClientList> readClients();
    /// The list of this turn, read where there is none yet.
    std::shared_ptr<const ClientList> clients();

    void hide(const std::string& application);
    /// The windows come back with those of all other applications unhidden in this turn of the main queue.
    void unhide(const std::string& application);
    void stopHiding();
    /// Brings back what is waiting to, and then a window to the front with the focus.
    void bringToFront(xcb_window_t window);
    /// The window in front, whichever the window manager shows meanwhile.
    xcb_window_t front(xcb_window_t active) const;
    /// Returns when the window manager has come to rest after bringing windows back, at the latest when it
    /// should have.
    void settle();
    /// Brings back all that was unhidden, wherever it is, and returns when the window manager has come to
    /// rest after that, at the latest when it should have. Before the process ends.
    void finish();

private:
    using Command = HiddenWindows::Command;

    void restore();
    void arrived();
    void followStates();
    void lookAtFront();
    void bringBackInPlace();
    void followSettling();
    void askWhenCarriedOut();
    /// Whether there was anything.
    bool send();
    /// The same, which goes out with what is sent next.
    bool write();
    void send(const Command& command);
    void select(xcb_window_t window, std::uint32_t events);

    XConnection& m_x;
    DesktopSnapshots& m_snapshots;
    WindowManagerSync& m_windowManager;
    MainQueue& m_queue;
    Log& m_log;
    HiddenWindows m_model;
    int m_outstanding = 0; // looks that wait for the window manager
    OncePerTurn m_restoring, m_lookingAtFront, m_followingStates, m_askingWhenCarriedOut;
    std::set<xcb_window_t> m_changedStates;
    std::array<Observation, 5> m_events;
};

} // namespace tavro
