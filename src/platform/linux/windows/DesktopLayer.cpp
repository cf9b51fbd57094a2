#include "platform/linux/windows/DesktopLayer.h"

#include <QGuiApplication>

#include <algorithm>
#include <array>

namespace tavro {

namespace {

/// Two programs that each insist on being the upper one must not fight for ever.
constexpr int mostRaises = 100;

constexpr XEventKind<xcb_shape_notify_event_t> shapeNotify{XCB_SHAPE_NOTIFY, &xcb_shape_id};

// Properties of our own windows go through the toolkit's connection: it has made them, and it maps them next.
xcb_connection_t* toolkitConnection() {
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

// The toolkit places windows by whole points, and has the window manager keep to steps of one: at some scales
// that misses a pixel of the screen.
void setPlace(xcb_window_t window, const QRect& pixels) {
    // ICCCM, WM_NORMAL_HINTS: position and size are meant, and without the frame.
    constexpr std::uint32_t userPosition = 1, userSize = 2, windowGravity = 512;
    std::array<std::uint32_t, 18> hints{userPosition | userSize | windowGravity};
    hints.back() = XCB_GRAVITY_STATIC;
    xcb_change_property(toolkitConnection(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, hints.size(), hints.data());
    const int values[] = {pixels.x(), pixels.y(), pixels.width(), pixels.height()};
    xcb_configure_window(toolkitConnection(), window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values);
}

void setAtoms(xcb_window_t window, xcb_atom_t property, const std::vector<xcb_atom_t>& atoms) {
    xcb_change_property(toolkitConnection(), XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(atoms.size()), atoms.data());
}

} // namespace

DesktopLayer::DesktopLayer(XConnection& x)
    : m_x(x)
    , m_events{
          x.on(XEvents::reparentNotify, [this](const auto& event) { reparented(event.window); }),
          x.on(shapeNotify, [this](const auto& event) { shapeChanged(event); }),
          x.onPropertyChange(x.root(), x.atoms().netClientListStacking, [this] { raiseCovered(); }),
      } {}

// The toolkit maps the window over its own connection, and a busy server may read that one first: then nobody
// would tell of the window manager's frame.
void DesktopLayer::add(xcb_window_t window, bool onAllWorkspaces, bool skipsSwitchers, bool passesClicks) {
    m_members[window] = {passesClicks, XCB_NONE, mostRaises};
    setAtoms(window, m_x.atoms().netWmWindowType, {m_x.atoms().netWmWindowTypeDesktop});
    setState(window, onAllWorkspaces, skipsSwitchers);
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_x.raw(), window, XCB_CW_EVENT_MASK, &mask);
    m_x.roundTrip();
    m_x.deliverQueuedEvents();
}

void DesktopLayer::setState(xcb_window_t window, bool onAllWorkspaces, bool skipsSwitchers) {
    const auto& atoms = m_x.atoms();
    std::vector<xcb_atom_t> state;
    if (onAllWorkspaces) {
        // Some window managers follow only the state, others only the desktop number.
        constexpr std::uint32_t all = 0xFFFFFFFF;
        state.push_back(atoms.netWmStateSticky);
        xcb_change_property(toolkitConnection(), XCB_PROP_MODE_REPLACE, window, atoms.netWmDesktop,
                            XCB_ATOM_CARDINAL, 32, 1, &all);
    }
    if (skipsSwitchers)
        state.insert(state.end(), {atoms.netWmStateSkipTaskbar, atoms.netWmStateSkipPager});
    setAtoms(window, atoms.netWmState, state);
}

// The toolkit knows this state and makes a window of another number when it changes, or takes it away on
// showing; so the window manager is asked for it.
void DesktopLayer::shown(xcb_window_t window, const QRect& pixels) const {
    constexpr std::uint32_t add = 1, fromApplication = 1;
    m_x.tellWindowManager(window, m_x.atoms().netWmState,
                          {add, m_x.atoms().netWmStateBelow, XCB_NONE, fromApplication}, toolkitConnection());
    if (!pixels.isEmpty())
        setPlace(window, pixels);
}

void DesktopLayer::remove(xcb_window_t window) {
    m_members.erase(window);
}

void DesktopLayer::shapeChanged(const xcb_shape_notify_event_t& event) {
    const bool takesClicks = !event.shaped || (event.extents_width > 0 && event.extents_height > 0);
    if (event.shape_kind == XCB_SHAPE_SK_INPUT && takesClicks)
        passClicks(event.affected_window);
}

// The window manager's frame takes the clicks that its window lets through, so it is emptied as well: it is
// the ancestor that is a child of the root.
void DesktopLayer::reparented(xcb_window_t window) {
    const auto member = m_members.find(window);
    if (member == m_members.end() || !member->second.passesClicks || !m_x.has(xcb_shape_id))
        return;
    auto frame = window;
    while (true) {
        const XReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(m_x.raw(), xcb_query_tree(m_x.raw(), frame), nullptr));
        if (!tree || tree->parent == XCB_NONE)
            return;
        if (tree->parent == tree->root)
            break;
        frame = tree->parent;
    }
    if (frame == window)
        return;
    member->second.frame = frame;
    xcb_shape_select_input(m_x.raw(), frame, true);
    passClicks(frame);
}

void DesktopLayer::passClicks(xcb_window_t frame) {
    const auto isFrame = [frame](const auto& member) { return member.second.frame == frame; };
    if (std::ranges::none_of(m_members, isFrame))
        return;
    xcb_shape_rectangles(m_x.raw(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED, frame,
                         0, 0, 0, nullptr);
    m_x.flush();
}

void DesktopLayer::raiseCovered() {
    if (m_members.empty())
        return;
    const auto stacking = m_x.values(m_x.request(m_x.root(), m_x.atoms().netClientListStacking));
    const auto desktops = foreignDesktops(stacking);
    const auto highestForeign = std::find_if(stacking.rbegin(), stacking.rend(),
                                             [&desktops](auto window) { return desktops.contains(window); });
    for (auto window = highestForeign; window != stacking.rend(); ++window) {
        const auto member = m_members.find(*window);
        if (member == m_members.end() || member->second.raisesLeft-- <= 0)
            continue;
        const std::uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(m_x.raw(), *window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    }
    m_x.flush();
}

// One round trip, however many windows there are.
std::set<xcb_window_t> DesktopLayer::foreignDesktops(const std::vector<xcb_window_t>& windows) const {
    std::vector<std::pair<xcb_window_t, xcb_get_property_cookie_t>> requests;
    for (const auto window : windows)
        if (!m_members.contains(window))
            requests.emplace_back(window, m_x.request(window, m_x.atoms().netWmWindowType));
    std::set<xcb_window_t> desktops;
    for (const auto& [window, request] : requests) {
        const auto types = m_x.values(request);
        if (std::ranges::find(types, m_x.atoms().netWmWindowTypeDesktop) != types.end())
            desktops.insert(window);
    }
    return desktops;
}

} // namespace tavro
