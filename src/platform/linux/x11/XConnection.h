#pragma once

#include "platform/process/ObserverList.h"

#include <QObject>
#include <xcb/xcb.h>

#include <chrono>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

class QSocketNotifier;

namespace tavro {

class Log;

struct FreeDeleter {
    void operator()(void* pointer) const { std::free(pointer); }
};

/// Owns a reply, an event or an error of the server.
template <class T>
using XReply = std::unique_ptr<T, FreeDeleter>;

/// The atoms in use, fetched together. Names as in EWMH, ICCCM and the system-tray protocol.
struct XAtoms {
    xcb_atom_t netActiveWindow, netClientListStacking, netCurrentDesktop, netFrameExtents,
        netRequestFrameExtents, netSupported, netSupportingWmCheck, netWmActionMinimize, netWmDesktop,
        netWmName, netWmPid, netWmState, netWmStateBelow, netWmStateHidden, netWmStateSkipPager,
        netWmStateSkipTaskbar, netWmStateSticky, netWmWindowType, netWmWindowTypeDesktop, netWmWindowTypeDock,
        netWmWindowTypeNotification, netWmWindowOpacity, comptonShadow, gtkApplicationId, kdeNetWmDesktopFile,
        manager, netSystemTray, netWmCm, tavroHidden, tavroInstance, wmChangeState, wmClientLeader,
        xrootpmapId;
};

/// A kind of event: what it holds, and its number, which for an extension's is counted from the first of
/// that.
template <class Event>
struct XEventKind {
    std::uint8_t number;
    xcb_extension_t* extension = nullptr;
};

namespace XEvents {
inline constexpr XEventKind<xcb_key_press_event_t> keyPress{XCB_KEY_PRESS};
inline constexpr XEventKind<xcb_key_release_event_t> keyRelease{XCB_KEY_RELEASE};
inline constexpr XEventKind<xcb_create_notify_event_t> createNotify{XCB_CREATE_NOTIFY};
inline constexpr XEventKind<xcb_destroy_notify_event_t> destroyNotify{XCB_DESTROY_NOTIFY};
inline constexpr XEventKind<xcb_reparent_notify_event_t> reparentNotify{XCB_REPARENT_NOTIFY};
inline constexpr XEventKind<xcb_configure_notify_event_t> configureNotify{XCB_CONFIGURE_NOTIFY};
inline constexpr XEventKind<xcb_property_notify_event_t> propertyNotify{XCB_PROPERTY_NOTIFY};
inline constexpr XEventKind<xcb_client_message_event_t> clientMessage{XCB_CLIENT_MESSAGE};
inline constexpr XEventKind<xcb_mapping_notify_event_t> mappingNotify{XCB_MAPPING_NOTIFY};
} // namespace XEvents

/// A connection of our own to the X server, beside the toolkit's: for what concerns other programs' windows
/// and the root window. Requests are sent in order; a window that died meanwhile is not an error. Events are
/// delivered by the event loop, whatever waits for a reply meanwhile.
class XConnection final : public QObject {
public:
    /// Null when there is no server to connect to. May be called before the toolkit starts.
    static std::unique_ptr<XConnection> open(Log& log);
    /// From now on events are delivered; once, after the toolkit has started.
    void start();
    ~XConnection() override;

    xcb_connection_t* raw() const { return m_connection; }
    xcb_screen_t* screen() const { return m_screen; }
    xcb_window_t root() const { return m_screen->root; }
    int screenNumber() const { return m_screenNumber; }
    const XAtoms& atoms() const { return m_atoms; }

    /// One that is not in that list.
    xcb_atom_t atom(const std::string& name) const;

    /// Whether somebody blends translucent windows with what lies below them.
    bool hasCompositingManager() const;

    /// Each event of a kind that arrives from now on; none where the server lacks the extension.
    template <class Event>
    [[nodiscard]] Observation on(XEventKind<Event> kind,
                                 std::function<void(const std::type_identity_t<Event>&)> handler) {
        return observe(kind.number, kind.extension,
                       [handler = std::move(handler)](const xcb_generic_event_t& event) {
                           handler(reinterpret_cast<const Event&>(event));
                       });
    }
    /// Each change of a property, and its end. Other windows than the root have to be asked to report.
    [[nodiscard]] Observation onPropertyChange(xcb_window_t window, xcb_atom_t property,
                                               std::function<void()> handler);
    /// Whether what happens to all children of the root window is reported. Not so at first: there is a lot.
    void watchTopLevels(bool areWatched);
    /// Each time a client says that it manages the screen's resource of that selection from now on (ICCCM).
    [[nodiscard]] Observation onNewManager(xcb_atom_t selection, std::function<void()> handler);
    /// The last request that the server had read when it sent the event that is being delivered.
    std::uint32_t requestBeforeEvent() const { return m_requestBeforeEvent; }
    bool has(xcb_extension_t& extension) const;
    /// The server's own, which also turns screens off; as long as the connection lasts (MIT-SCREEN-SAVER).
    void suspendScreenSaver(bool isSuspended);
    /// Sends what was requested so far.
    void flush();
    /// Waits for events and delivers them; false when none came in that time.
    bool waitForEvents(std::chrono::milliseconds atMost);
    /// Returns when the server has carried out what was requested so far.
    void roundTrip();

    xcb_get_property_cookie_t request(xcb_window_t window, xcb_atom_t property) const;
    /// The 32-bit values of a property; empty where there is none.
    std::vector<std::uint32_t> values(xcb_get_property_cookie_t cookie) const;
    std::optional<std::uint32_t> value(xcb_get_property_cookie_t cookie) const;
    /// The bytes of a text property; empty where there is none.
    std::string text(xcb_get_property_cookie_t cookie) const;
    /// The window that is a child of the root: the window's frame, or itself. Some round trips.
    xcb_window_t topLevelOf(xcb_window_t window) const;
    /// A client message to the window manager, as EWMH and ICCCM describe them; over the given connection
    /// where its order among the requests of that one matters.
    void askWindowManager(xcb_window_t window, xcb_atom_t type, std::initializer_list<std::uint32_t> data,
                          xcb_connection_t* over = nullptr) const;

private:
    XConnection(xcb_connection_t* connection, int screenNumber, Log& log);
    using Observer = std::function<void(const xcb_generic_event_t&)>;

    void fetchAtoms();
    Observation observe(std::uint8_t number, xcb_extension_t* extension, Observer observer);
    bool processEvents();
    XReply<xcb_generic_event_t> nextEvent();
    void report(const xcb_generic_error_t& error) const;

    xcb_connection_t* m_connection;
    int m_screenNumber;
    xcb_screen_t* m_screen;
    Log& m_log;
    XAtoms m_atoms{};
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::uint32_t m_requestBeforeEvent = 0;
    std::map<int, ObserverList<const xcb_generic_event_t&>> m_observers; // by the event's number
};

} // namespace tavro
