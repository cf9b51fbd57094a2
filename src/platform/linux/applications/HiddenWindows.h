#pragma once

#include "platform/linux/process/OncePerTurn.h"
#include "platform/linux/x11/ClientList.h"

#include <array>
#include <chrono>
#include <map>
#include <memory>
#include <set>
#include <string>

namespace tavro {

class Log;
class MainQueue;

/// What hiding applications means for their windows: those that are not minimised are marked and minimised;
/// the marked ones come back.
///
/// The mark is a property of the window and holds its place in the stacking order, so that a process that
/// starts after ours has died can still bring it back. Windows of another workspace are left alone (window
/// managers move them here, or move the user there) and treated the same when the user arrives there.
class HiddenWindows : public std::enable_shared_from_this<HiddenWindows> {
public:
    HiddenWindows(XConnection& x, MainQueue& queue, Log& log);

    /// Reads the windows anew; the list holds for the rest of this turn of the main queue.
    std::shared_ptr<const ClientList> readClients();
    /// The list of this turn, read where there is none yet.
    std::shared_ptr<const ClientList> clients();

    void hide(const std::string& application);
    /// The windows come back with those of all other applications unhidden in this turn of the main queue.
    void unhide(const std::string& application);
    /// Now, not at the end of the turn.
    void restore() { m_restoring.doNow(); }
    /// Brings back what is waiting to, and then a window to the front with the focus.
    void bringToFront(xcb_window_t window);
    /// Returns when the window manager has come to rest after that, at the latest when it should have.
    void settle();

private:
    void stateChanged(const xcb_property_notify_event_t& event);
    void arrived();
    void followStates();
    void stateIs(xcb_window_t window, bool isMinimised);
    void minimise(const ClientWindow& window, std::uint32_t place);
    void restoreMarked();
    void restore(const ClientWindow& window);
    void raise(const ClientWindow& window) const;
    void activate(xcb_window_t window) const;
    void keepInFront();
    bool isSettling() const;
    xcb_window_t activeWindow() const;
    void removeMark(xcb_window_t window);
    void watch(xcb_window_t window, bool changes) const;

    XConnection& m_x;
    MainQueue& m_queue;
    Log& m_log;
    std::shared_ptr<const ClientList> m_clients;
    std::set<std::string> m_hiddenApplications;
    /// Those asked to come back since; the marked windows of theirs on other workspaces still have to.
    std::set<std::string> m_unhiddenApplications;
    OncePerTurn m_restoring;
    OncePerTurn m_keepingInFront;
    OncePerTurn m_followingStates;
    std::set<xcb_window_t> m_changedStates;
    /// The windows that this process has hidden, and whether the window manager has done so yet.
    std::map<xcb_window_t, bool> m_minimised;
    /// The stacking order, bottom to top, when the first application was hidden.
    std::vector<xcb_window_t> m_stackingAtHide;
    /// The window that is to be in front of those brought back.
    xcb_window_t m_front = XCB_NONE;
    std::set<xcb_window_t> m_broughtBack;
    /// The uppermost of those until it has had the focus.
    xcb_window_t m_lastBroughtBack = XCB_NONE;
    std::chrono::steady_clock::time_point m_settlingEnds;
    std::uint32_t m_workspace = 0;
    std::array<Observation, 4> m_events;
};

} // namespace tavro
