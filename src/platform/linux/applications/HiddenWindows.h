#pragma once

#include "platform/linux/x11/ClientList.h"

#include <array>
#include <chrono>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tavro {

/// What hiding applications means for their windows: those that are not minimised are marked and minimised;
/// the marked ones come back. It knows no server: requests and what the server reports go in as calls,
/// commands come out.
///
/// The mark is a property of the window and holds its place in the stacking order, so that a process that
/// starts after ours has died can still bring it back. Windows of another workspace are left alone (window
/// managers move them here, or move the user there) and treated the same when the user arrives there.
///
/// The window manager carries out requests in their order, and later, or it ends before that. Until it has
/// come to all of them, what is heard of a window may be older than the request, and is not what the user
/// did. Then it is looked at: a window that is not as it was asked to be is asked again. From then on, one
/// that comes back without us is the user's, and stays so. The mark goes when the window is back, so that a
/// crash in between loses none.
class HiddenWindows {
public:
    using Time = std::chrono::steady_clock::time_point;
    using Duration = std::chrono::milliseconds;

    struct Command {
        enum class What {
            watch, // its state and its end
            unwatch,
            mark, // with the value as its place in the stacking order
            unmark,
            conceal, // out of sight, where it is
            reveal,
            minimise,
            activate,
            raise,
            clearHidden, // ask for a state that is not minimised, which moves nobody
            map,         // which some window managers want instead, and may bring it to the user's workspace
            moveTo,      // the workspace of the value
        };
        What what;
        xcb_window_t window;
        std::uint32_t value = 0;
        bool operator==(const Command&) const = default;
    };

    void hide(const std::string& application, const ClientList& list);
    /// With the next `restore`.
    void unhide(const std::string& application);
    /// Nothing more is hidden on arrival at another workspace. What is hidden stays so.
    void stopHiding();
    /// Brings back the windows of all applications unhidden meanwhile, in their former stacking order.
    void restore(const ClientList& list);
    /// Makes a window the one in front of those brought back.
    void bringToFront(xcb_window_t window, Time now);

    /// The process ends: what waits for the user on other workspaces comes back there, and what did not come
    /// back before, by one way after the other: each is tried on all of them.
    static constexpr std::array waysInPlace{Command::What::clearHidden, Command::What::map};
    void bringBackInPlace(Command::What way, const ClientList& list);
    /// Whether all that are to come back stand where they belong again.
    bool haveReturned(const ClientList& list);

    /// The user has come to another workspace.
    void arrived(const ClientList& list, Time now);
    void activeIs(xcb_window_t window, Time now);
    void stateIs(xcb_window_t window, bool isMinimised);
    /// `moment`: the request before which the server reported it.
    void destroyed(xcb_window_t window, std::uint32_t moment);

    /// Whether its state matters.
    bool follows(xcb_window_t window) const { return m_entries.contains(window); }
    /// Whether the window manager may still let go of the window that is to be in front.
    bool isSettling(Time now) const { return !m_broughtBack.empty() && now < m_settlingEnds; }
    /// How long it may at the most.
    Duration settlingTime() const;
    /// The window manager has come to all that was asked of it before this list was read.
    void carriedOut(const ClientList& list);
    /// Another window manager has taken over, which may know nothing of what the one before was asked for.
    void windowManagerChanged();
    /// The window in front, or about to be while the window manager still shows the others.
    xcb_window_t front(xcb_window_t active, Time now) const;

    /// What is to be sent since the last call, in this order.
    std::vector<Command> takeCommands() { return std::exchange(m_commands, {}); }
    std::vector<std::string> takeComplaints() { return std::exchange(m_complaints, {}); }

private:
    using What = Command::What;

    enum class Stage {
        due,       // to be hidden when the user arrives at its workspace
        hidden,    // marked, and asked to minimise
        waiting,   // hidden, and to come back when the user arrives at its workspace
        returning, // asked to come back, and not seen back
    };
    struct Entry {
        Stage stage = Stage::due;
        /// Hidden without being minimised: the window manager cannot, or does not, do that.
        bool isConcealed = false;
        std::uint32_t moment = 0; // of the list in which it was last seen: its number may become another's
        std::uint32_t workspace = 0;
        /// How often it was asked for what it is to be, while the window manager may not have come to that.
        int requests = 0;
        bool isToComeBack() const { return stage == Stage::waiting || stage == Stage::returning; }
        /// Requests to bring it back were in vain; the next one may not be.
        bool isGivenUp() const { return stage == Stage::returning && requests == 0; }
        /// Concealed after requests that seemed to be in vain: some window managers report a state, or take
        /// it, some time after the next request is answered.
        bool mayObeyLate() const { return isConcealed && requests > 0; }
        bool isHidden() const { return stage == Stage::hidden || stage == Stage::waiting || isGivenUp(); }
    };

    void send(What what, xcb_window_t window, std::uint32_t value = 0);
    Entry* find(xcb_window_t window);
    Entry& follow(const ClientWindow& window, std::uint32_t moment, Stage stage);
    void forget(xcb_window_t window);
    std::uint32_t place(xcb_window_t window);
    void recordStacking(const ClientList& list);
    void hide(const ClientWindow& window, const ClientList& list);
    void minimise(const ClientWindow& window, std::uint32_t moment);
    void conceal(const ClientWindow& window, std::uint32_t moment);
    void reveal(const ClientWindow& window);
    void obeyedLate(xcb_window_t window, Entry& entry);
    void putInOrder(const std::multimap<std::uint32_t, const ClientWindow*>& byPlace, const ClientList& list);
    void bringBack(const ClientWindow& window, std::uint32_t moment);
    void activate(xcb_window_t window);
    bool activateWhatWasNotRaised(const ClientList& list);
    std::optional<What> lookAt(const ClientWindow& window, Entry& entry);
    void giveUp(const ClientWindow& window, Entry& entry);
    void release(xcb_window_t window);

    std::map<xcb_window_t, Entry> m_entries;
    bool m_isHiding = false;
    /// The stacking order, bottom to top, when the first application was hidden.
    std::vector<xcb_window_t> m_stacking;
    /// What was asked to come back or to be raised, bottom to top, until it has been looked at.
    std::vector<xcb_window_t> m_order;
    /// The applications unhidden since the last restoring.
    std::set<std::string> m_unhidden;
    xcb_window_t m_front = XCB_NONE;
    std::set<xcb_window_t> m_broughtBack;
    /// The uppermost of those until it has had the focus.
    xcb_window_t m_lastBroughtBack = XCB_NONE;
    Time m_settlingEnds;
    std::vector<Command> m_commands;
    std::vector<std::string> m_complaints;
};

} // namespace tavro
