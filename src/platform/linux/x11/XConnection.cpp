#include "platform/linux/x11/XConnection.h"

#include "platform/process/Log.h"

#include <QAbstractEventDispatcher>
#include <QSocketNotifier>

#include <X11/Xlib.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <poll.h>
#include <xcb/render.h>
#include <xcb/screensaver.h>

namespace tavro {

namespace {

constexpr std::pair<xcb_atom_t XAtoms::*, const char*> atomNames[] = {
    {&XAtoms::netActiveWindow, "_NET_ACTIVE_WINDOW"},
    {&XAtoms::netClientListStacking, "_NET_CLIENT_LIST_STACKING"},
    {&XAtoms::netCurrentDesktop, "_NET_CURRENT_DESKTOP"},
    {&XAtoms::netFrameExtents, "_NET_FRAME_EXTENTS"},
    {&XAtoms::netRequestFrameExtents, "_NET_REQUEST_FRAME_EXTENTS"},
    {&XAtoms::netSupported, "_NET_SUPPORTED"},
    {&XAtoms::netSupportingWmCheck, "_NET_SUPPORTING_WM_CHECK"},
    {&XAtoms::netWmActionMinimize, "_NET_WM_ACTION_MINIMIZE"},
    {&XAtoms::netWmDesktop, "_NET_WM_DESKTOP"},
    {&XAtoms::netWmName, "_NET_WM_NAME"},
    {&XAtoms::netWmPid, "_NET_WM_PID"},
    {&XAtoms::netWmState, "_NET_WM_STATE"},
    {&XAtoms::netWmStateBelow, "_NET_WM_STATE_BELOW"},
    {&XAtoms::netWmStateHidden, "_NET_WM_STATE_HIDDEN"},
    {&XAtoms::netWmStateSkipPager, "_NET_WM_STATE_SKIP_PAGER"},
    {&XAtoms::netWmStateSkipTaskbar, "_NET_WM_STATE_SKIP_TASKBAR"},
    {&XAtoms::netWmStateSticky, "_NET_WM_STATE_STICKY"},
    {&XAtoms::netWmWindowOpacity, "_NET_WM_WINDOW_OPACITY"},
    {&XAtoms::netWmWindowType, "_NET_WM_WINDOW_TYPE"},
    {&XAtoms::netWmWindowTypeDesktop, "_NET_WM_WINDOW_TYPE_DESKTOP"},
    {&XAtoms::netWmWindowTypeDock, "_NET_WM_WINDOW_TYPE_DOCK"},
    {&XAtoms::netWmWindowTypeNotification, "_NET_WM_WINDOW_TYPE_NOTIFICATION"},
    {&XAtoms::comptonShadow, "_COMPTON_SHADOW"},
    {&XAtoms::gtkApplicationId, "_GTK_APPLICATION_ID"},
    {&XAtoms::kdeNetWmDesktopFile, "_KDE_NET_WM_DESKTOP_FILE"},
    {&XAtoms::manager, "MANAGER"},
    {&XAtoms::tavroHidden, "_TAVROPRO_HIDDEN"},
    {&XAtoms::tavroInstance, "_TAVROPRO_INSTANCE"},
    {&XAtoms::wmChangeState, "WM_CHANGE_STATE"},
    {&XAtoms::wmClientLeader, "WM_CLIENT_LEADER"},
    {&XAtoms::xrootpmapId, "_XROOTPMAP_ID"},
};

xcb_screen_t* screenAt(xcb_connection_t* connection, int number) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; number > 0; --number)
        xcb_screen_next(&screens);
    return screens.data;
}

xcb_intern_atom_cookie_t intern(xcb_connection_t* connection, std::string_view name) {
    return xcb_intern_atom(connection, false, static_cast<std::uint16_t>(name.size()), name.data());
}

xcb_atom_t interned(xcb_connection_t* connection, xcb_intern_atom_cookie_t cookie) {
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

} // namespace

std::unique_ptr<XConnection> XConnection::open(Log& log) {
    int screenNumber = 0;
    auto* connection = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(connection)) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<XConnection>(new XConnection(connection, screenNumber, log));
}

XConnection::XConnection(xcb_connection_t* connection, int screenNumber, Log& log)
    : m_connection(connection)
    , m_screenNumber(screenNumber)
    , m_screen(screenAt(connection, screenNumber))
    , m_log(log) {
    fetchAtoms();
}

void XConnection::start() {
    // In place of the toolkit's handler, which leaves it to Xlib to say the same again in lines of its own.
    XSetIOErrorHandler([](Display*) -> int {
        qWarning("The connection to the X server broke");
        std::_Exit(EXIT_FAILURE);
    });
    watchTopLevels(false);
    m_notifier =
        std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(m_connection), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] { processEvents(); });
    // Who waits for a reply, or sends, reads events from the socket, which then is quiet.
    for (const auto turn : {&QAbstractEventDispatcher::aboutToBlock, &QAbstractEventDispatcher::awake})
        connect(QAbstractEventDispatcher::instance(), turn, this, [this] { processEvents(); });
    flush();
}

void XConnection::watchTopLevels(bool areWatched) {
    std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    if (areWatched)
        mask |= XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection, root(), XCB_CW_EVENT_MASK, &mask);
}

XConnection::~XConnection() {
    xcb_disconnect(m_connection);
}

void XConnection::fetchAtoms() {
    std::array<xcb_intern_atom_cookie_t, std::size(atomNames)> cookies{};
    std::ranges::transform(atomNames, cookies.begin(),
                           [this](const auto& entry) { return intern(m_connection, entry.second); });
    const auto number = std::to_string(m_screenNumber);
    const auto tray = intern(m_connection, "_NET_SYSTEM_TRAY_S" + number);
    const auto compositing = intern(m_connection, "_NET_WM_CM_S" + number);
    for (std::size_t i = 0; i < cookies.size(); ++i)
        m_atoms.*atomNames[i].first = interned(m_connection, cookies[i]);
    m_atoms.netSystemTray = interned(m_connection, tray);
    m_atoms.netWmCm = interned(m_connection, compositing);
}

xcb_atom_t XConnection::atom(const std::string& name) const {
    return interned(m_connection, intern(m_connection, name));
}

bool XConnection::hasCompositingManager() const {
    const XReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_connection, xcb_get_selection_owner(m_connection, m_atoms.netWmCm), nullptr));
    return reply && reply->owner != XCB_NONE;
}

bool XConnection::has(xcb_extension_t& extension) const {
    const auto* data = xcb_get_extension_data(m_connection, &extension);
    return data && data->present;
}

Observation XConnection::observe(std::uint8_t number, xcb_extension_t* extension, Observer observer) {
    if (extension && !has(*extension))
        return {};
    const int first = extension ? xcb_get_extension_data(m_connection, extension)->first_event : 0;
    return m_observers[first + number].add(std::move(observer));
}

Observation XConnection::onPropertyChange(xcb_window_t window, xcb_atom_t property,
                                          std::function<void()> handler) {
    return on(XEvents::propertyNotify, [window, property, handler = std::move(handler)](const auto& event) {
        if (event.window == window && event.atom == property)
            handler();
    });
}

Observation XConnection::onNewManager(xcb_atom_t selection, std::function<void()> handler) {
    return on(XEvents::clientMessage, [this, selection, handler = std::move(handler)](const auto& event) {
        // ICCCM, "Manager selections": the second word names the selection.
        if (event.type == m_atoms.manager && event.data.data32[1] == selection)
            handler();
    });
}

void XConnection::suspendScreenSaver(bool isSuspended) {
    if (!has(xcb_screensaver_id))
        return;
    xcb_screensaver_suspend(m_connection, isSuspended);
    flush();
}

void XConnection::flush() {
    xcb_flush(m_connection);
}

bool XConnection::waitForEvents(std::chrono::milliseconds atMost) {
    if (processEvents())
        return true;
    pollfd descriptor{xcb_get_file_descriptor(m_connection), POLLIN, 0};
    ::poll(&descriptor, 1, static_cast<int>(atMost.count()));
    return processEvents();
}

void XConnection::roundTrip() {
    // The cheapest question: its answer comes after all that was requested before.
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}

bool XConnection::processEvents() {
    bool anyCame = false;
    while (const auto event = nextEvent()) {
        anyCame = true;
        constexpr int sentByAClient = 0x80;
        // Errors of requests that nobody checks come among the events.
        if (event->response_type == 0)
            report(reinterpret_cast<const xcb_generic_error_t&>(*event));
        m_requestBeforeEvent = event->full_sequence;
        if (const auto list = m_observers.find(event->response_type & ~sentByAClient);
            list != m_observers.end())
            list->second.notify(*event);
    }
    // The toolkit's connection has broken as well, reports it and ends the process.
    if (xcb_connection_has_error(m_connection))
        m_notifier->setEnabled(false);
    return anyCame;
}

// Sending may read what has arrived, like waiting for a reply.
XReply<xcb_generic_event_t> XConnection::nextEvent() {
    XReply<xcb_generic_event_t> event(xcb_poll_for_event(m_connection));
    if (!event) {
        xcb_flush(m_connection);
        event.reset(xcb_poll_for_queued_event(m_connection));
    }
    return event;
}

void XConnection::report(const xcb_generic_error_t& error) const {
    const auto* render = xcb_get_extension_data(m_connection, &xcb_render_id);
    const bool isOfPicture =
        render && render->present && error.error_code == render->first_error + XCB_RENDER_PICTURE;
    if (error.error_code == XCB_WINDOW || error.error_code == XCB_DRAWABLE || isOfPicture)
        return; // it closed meanwhile, or the pixmap was freed
    m_log.diagnose("X request " + std::to_string(error.major_code) + "." + std::to_string(error.minor_code) +
                   " failed with error " + std::to_string(error.error_code));
}

xcb_get_property_cookie_t XConnection::request(xcb_window_t window, xcb_atom_t property) const {
    // 64 KiB, enough for the longest list of windows; what is longer is cut.
    constexpr std::uint32_t atMostWords = 16384;
    return xcb_get_property(m_connection, false, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, atMostWords);
}

std::vector<std::uint32_t> XConnection::values(xcb_get_property_cookie_t cookie) const {
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection, cookie, nullptr));
    // What has another format than it should is a mistake of the other program's, and counts as absent.
    if (!reply || reply->format != 32)
        return {};
    std::vector<std::uint32_t> values(reply->value_len);
    if (!values.empty())
        std::memcpy(values.data(), xcb_get_property_value(reply.get()),
                    values.size() * sizeof(std::uint32_t));
    return values;
}

std::optional<std::uint32_t> XConnection::value(xcb_get_property_cookie_t cookie) const {
    const auto all = values(cookie);
    return all.empty() ? std::nullopt : std::optional(all.front());
}

std::string XConnection::text(xcb_get_property_cookie_t cookie) const {
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection, cookie, nullptr));
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
}

xcb_window_t XConnection::topLevelOf(xcb_window_t window) const {
    for (auto frame = window;;) {
        const XReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, frame), nullptr));
        if (!tree || tree->parent == tree->root || tree->parent == XCB_NONE)
            return frame;
        frame = tree->parent;
    }
}

void XConnection::askWindowManager(xcb_window_t window, xcb_atom_t type,
                                   std::initializer_list<std::uint32_t> data, xcb_connection_t* over) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = type;
    std::ranges::copy(data, message.data.data32);
    // EWMH: to the root, with the masks that reach the one client that redirects its children.
    xcb_send_event(over ? over : m_connection, false, root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
}

} // namespace tavro
