#include "platform/linux/windows/DesktopLayer.h"

#include <QGuiApplication>

#include <algorithm>
#include <array>

namespace tavro {

namespace {

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
          x.onPropertyChange(x.root(), x.atoms().netClientListStacking, [this] { restacked(); }),
      } {}

// The toolkit maps the window over its own connection, and a busy server may read that one first: then nobody
// would report the window manager's frame.
void DesktopLayer::add(xcb_window_t window, bool onAllWorkspaces, bool skipsSwitchers, bool passesClicks) {
    m_covers.add(window, passesClicks);
    setAtoms(window, m_x.atoms().netWmWindowType, {m_x.atoms().netWmWindowTypeDesktop});
    setState(window, onAllWorkspaces, skipsSwitchers);
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_x.raw(), window, XCB_CW_EVENT_MASK, &mask);
    m_x.roundTrip();
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
    m_x.askWindowManager(window, m_x.atoms().netWmState,
                         {add, m_x.atoms().netWmStateBelow, XCB_NONE, fromApplication}, toolkitConnection());
    if (!pixels.isEmpty())
        setPlace(window, pixels);
}

void DesktopLayer::remove(xcb_window_t window) {
    m_covers.remove(window);
}

void DesktopLayer::shapeChanged(const xcb_shape_notify_event_t& event) {
    const bool takesClicks = !event.shaped || (event.extents_width > 0 && event.extents_height > 0);
    if (event.shape_kind == XCB_SHAPE_SK_INPUT && takesClicks)
        m_covers.takesClicks(event.affected_window);
    send();
}

void DesktopLayer::reparented(xcb_window_t window) {
    if (!m_covers.contains(window) || !m_x.has(xcb_shape_id))
        return;
    if (const auto frame = frameOf(window); frame != XCB_NONE)
        m_covers.framed(window, frame);
    send();
}

/// The ancestor that is a child of the root; none where that is the window itself.
xcb_window_t DesktopLayer::frameOf(xcb_window_t window) const {
    for (auto frame = window;;) {
        const XReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(m_x.raw(), xcb_query_tree(m_x.raw(), frame), nullptr));
        if (!tree || tree->parent == XCB_NONE)
            return XCB_NONE;
        if (tree->parent == tree->root)
            return frame == window ? xcb_window_t{XCB_NONE} : frame;
        frame = tree->parent;
    }
}

void DesktopLayer::restacked() {
    if (m_covers.isEmpty())
        return;
    m_covers.restacked(readStacking());
    send();
}

// One round trip more than for the order, however many windows there are.
std::vector<Covers::StackedWindow> DesktopLayer::readStacking() const {
    const auto windows = m_x.values(m_x.request(m_x.root(), m_x.atoms().netClientListStacking));
    std::vector<xcb_get_property_cookie_t> requests;
    for (const auto window : windows)
        requests.push_back(m_x.request(window, m_x.atoms().netWmWindowType));
    std::vector<Covers::StackedWindow> stacking;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto types = m_x.values(requests[i]);
        const bool isDesktop = std::ranges::count(types, m_x.atoms().netWmWindowTypeDesktop) > 0;
        stacking.push_back({windows[i], isDesktop});
    }
    return stacking;
}

void DesktopLayer::send() {
    using What = Covers::Command::What;
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    for (const auto& [what, window] : m_covers.takeCommands()) {
        if (what == What::watchFrame)
            xcb_shape_select_input(m_x.raw(), window, true);
        else if (what == What::passClicks)
            xcb_shape_rectangles(m_x.raw(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                                 window, 0, 0, 0, nullptr);
        else
            xcb_configure_window(m_x.raw(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    }
    m_x.flush();
}

} // namespace tavro
