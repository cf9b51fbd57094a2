#include "ClientApplication.h"

#include <algorithm>
#include <array>
#include <unistd.h>

namespace {

// ICCCM, WM_NORMAL_HINTS: the user has chosen position and size, so the window manager keeps them.
constexpr std::uint32_t userPosition = 1, userSize = 2;

} // namespace

ClientApplication::ClientApplication(XServer& server, std::string name)
    : m_server(server)
    , m_name(std::move(name))
    , m_connection(xcb_connect(nullptr, nullptr)) {}

ClientApplication::~ClientApplication() {
    xcb_disconnect(m_connection);
}

xcb_window_t ClientApplication::addWindow(const Rect& place) {
    const auto window = show(place);
    EXPECT_TRUE(isInFront(window));
    return window;
}

// Where the window in front goes at that moment, the window manager may leave the focus with the desktop;
// then it takes a click, as the user's.
testing::AssertionResult ClientApplication::isInFront(xcb_window_t window) {
    return m_server.eventually("a window of " + m_name + " in front", [this, window] {
        const auto active = m_server.active();
        if (m_server.isViewable(window) &&
            m_server.has(active, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DESKTOP"))
            m_server.activate(window);
        return m_server.isViewable(window) && active == window;
    });
}

std::vector<xcb_window_t> ClientApplication::addWindows(int count) {
    std::vector<xcb_window_t> windows;
    windows.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        windows.push_back(show({300 + i % 20 * 50, 100 + i / 20 * 60, 40, 30}));
    EXPECT_TRUE(isInFront(windows.back()));
    return windows;
}

void ClientApplication::destroy(xcb_window_t window) {
    xcb_destroy_window(m_connection, window);
    xcb_flush(m_connection);
}

xcb_window_t ClientApplication::addBubble(const Rect& place) {
    const auto window = create(place, false);
    const auto type = m_server.atom("_NET_WM_WINDOW_TYPE_NOTIFICATION");
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, m_server.atom("_NET_WM_WINDOW_TYPE"),
                        XCB_ATOM_ATOM, 32, 1, &type);
    xcb_map_window(m_connection, window);
    xcb_flush(m_connection);
    return window;
}

xcb_window_t ClientApplication::create(const Rect& place, bool isManaged) {
    const auto window = xcb_generate_id(m_connection);
    const std::uint32_t greyAndUnmanaged[] = {0x808890, !isManaged};
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, m_server.root(),
                      static_cast<std::int16_t>(place.x), static_cast<std::int16_t>(place.y),
                      static_cast<std::uint16_t>(place.width), static_cast<std::uint16_t>(place.height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, greyAndUnmanaged);
    return window;
}

xcb_window_t ClientApplication::show(const Rect& place) {
    const auto window = create(place, true);
    const auto set = [&](xcb_atom_t property, xcb_atom_t type, std::uint8_t format, std::size_t length,
                         const void* data) {
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, property, type, format,
                            static_cast<std::uint32_t>(length), data);
    };
    const auto wmClass = m_name + '\0' + m_name + '\0';
    set(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, wmClass.size(), wmClass.data());
    set(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, m_name.size(), m_name.data());
    const std::array<std::uint32_t, 18> sizeHints{userPosition | userSize};
    set(XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 32, sizeHints.size(), sizeHints.data());
    xcb_map_window(m_connection, window);
    xcb_flush(m_connection);
    return window;
}
