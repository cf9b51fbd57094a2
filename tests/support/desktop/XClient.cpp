#include "XClient.h"

#include <xcb/randr.h>

#include <algorithm>
#include <cstring>
#include <poll.h>
#include <set>
#include <stdexcept>

/// The answer to a request.
#define REPLY(request, ...)                                                                                  \
    owned(xcb_##request##_reply(m_connection, xcb_##request(m_connection __VA_OPT__(, ) __VA_ARGS__),        \
                                nullptr))

std::ostream& operator<<(std::ostream& stream, const Rect& rect) {
    return stream << rect.width << 'x' << rect.height << '+' << rect.x << '+' << rect.y;
}

XClient::XClient()
    : m_connection(xcb_connect(nullptr, nullptr))
    , m_screen(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data) {
    if (xcb_connection_has_error(m_connection))
        throw std::runtime_error("no X server");
}

XClient::~XClient() {
    xcb_disconnect(m_connection);
}

void XClient::watch(xcb_window_t window, std::uint32_t eventMask) const {
    xcb_change_window_attributes(m_connection, window, XCB_CW_EVENT_MASK, &eventMask);
    xcb_flush(m_connection);
}

void XClient::waitForEvent(std::chrono::milliseconds atMost) {
    xcb_flush(m_connection);
    bool any = false;
    while (const auto event = owned(xcb_poll_for_event(m_connection))) {
        any = true;
        if ((event->response_type & 0x7F) == XCB_KEY_PRESS)
            m_keysSeen.push_back(reinterpret_cast<const xcb_key_press_event_t&>(*event).detail);
    }
    pollfd readable{xcb_get_file_descriptor(m_connection), POLLIN, 0};
    const bool isAlive = !xcb_connection_has_error(m_connection); // else it is readable for ever
    if (!any)
        ::poll(&readable, isAlive ? 1 : 0, static_cast<int>(atMost.count()));
}

std::vector<Rect> XClient::screens() const {
    const auto reply = REPLY(randr_get_monitors, root(), 1);
    std::vector<Rect> screens;
    for (auto i = xcb_randr_get_monitors_monitors_iterator(reply.get()); i.rem;
         xcb_randr_monitor_info_next(&i))
        screens.push_back({i.data->x, i.data->y, i.data->width, i.data->height});
    return screens;
}

std::vector<xcb_window_t> XClient::applicationWindows() const {
    auto windows = clients();
    std::erase_if(windows, [this](auto window) {
        return has(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DESKTOP") ||
               has(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DOCK");
    });
    return windows;
}

std::vector<xcb_window_t> XClient::menus() const {
    auto windows = children(root());
    // Frames bear no type; helpers of some programs stand beyond the screens.
    std::erase_if(windows, [this](auto window) {
        const auto attributes = REPLY(get_window_attributes, window);
        return !attributes || !attributes->override_redirect || !isViewable(window) || place(window).x < 0 ||
               values(window, "_NET_WM_WINDOW_TYPE").empty() ||
               has(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_TOOLTIP");
    });
    return windows;
}

std::vector<std::uint32_t> XClient::values(xcb_window_t window, const std::string& property) const {
    const auto reply =
        REPLY(get_property, false, window, atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, 16384);
    if (!reply || reply->format != 32)
        return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

std::string XClient::text(xcb_window_t window, const std::string& property) const {
    const auto reply = REPLY(get_property, false, window, atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, 256);
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
}

bool XClient::has(xcb_window_t window, const std::string& property, const std::string& atomName) const {
    const auto all = values(window, property);
    return std::ranges::find(all, atom(atomName)) != all.end();
}

bool XClient::isViewable(xcb_window_t window) const {
    const auto reply = REPLY(get_window_attributes, window);
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE &&
           reply->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
}

Rect XClient::place(xcb_window_t window) const {
    const auto size = REPLY(get_geometry, window);
    const auto corner = REPLY(translate_coordinates, window, root(), 0, 0);
    if (!size || !corner)
        return {};
    return {corner->dst_x, corner->dst_y, size->width, size->height};
}

xcb_window_t XClient::focus() const {
    const auto reply = REPLY(get_input_focus);
    return reply ? reply->focus : xcb_window_t{XCB_NONE};
}

Pixels XClient::wallpaper(const Rect& area) const {
    const auto pixmap = values(root(), "_XROOTPMAP_ID");
    return pixmap.empty() ? Pixels() : image(pixmap.front(), area);
}

std::size_t XClient::pixelsBesidesWallpaper(const Rect& area) const {
    std::set<xcb_window_t> desktopFrames;
    for (const auto window : clients())
        if (has(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DESKTOP"))
            desktopFrames.insert(frame(window));
    std::vector<Rect> inFront;
    for (const auto window : children(root()))
        if (!desktopFrames.contains(window) && isViewable(window))
            inFront.push_back(place(window));
    const auto shown = screenshot(area);
    const auto expected = wallpaper(area);
    if (shown.empty() || shown.size() != expected.size())
        return static_cast<std::size_t>(area.width) * static_cast<std::size_t>(area.height);
    std::size_t different = 0;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const auto offset = static_cast<int>(i);
        const Point point{area.x + offset % area.width, area.y + offset / area.width};
        if (shown[i] != expected[i] &&
            std::ranges::none_of(inFront, [&](const Rect& rect) { return rect.contains(point); }))
            ++different;
    }
    return different;
}

bool XClient::grab(xcb_keycode_t keycode, std::uint16_t modifiers) {
    const auto request = xcb_grab_key_checked(m_connection, false, root(), modifiers, keycode,
                                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    return !owned(xcb_request_check(m_connection, request));
}

void XClient::ungrab(xcb_keycode_t keycode, std::uint16_t modifiers) {
    const auto request = xcb_ungrab_key_checked(m_connection, keycode, root(), modifiers);
    owned(xcb_request_check(m_connection, request));
}

bool XClient::grabKeyboard() {
    const auto reply =
        REPLY(grab_keyboard, false, root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    m_keysSeen.clear();
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void XClient::ungrabKeyboard() {
    xcb_ungrab_keyboard(m_connection, XCB_CURRENT_TIME);
    xcb_flush(m_connection);
}

std::vector<xcb_window_t> XClient::topWindows(pid_t process, Size size) const {
    auto windows = children(root());
    std::erase_if(windows, [&](auto window) {
        const auto where = place(window);
        return where.width != size.width || where.height != size.height || !isViewable(window) ||
               values(window, "_NET_WM_PID") != std::vector{static_cast<std::uint32_t>(process)};
    });
    return windows;
}

Pixels XClient::image(xcb_drawable_t drawable, const Rect& area) const {
    const auto reply =
        REPLY(get_image, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, static_cast<std::int16_t>(area.x),
              static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
              static_cast<std::uint16_t>(area.height), ~0u);
    if (!reply)
        return {};
    Pixels pixels(static_cast<std::size_t>(area.width) * static_cast<std::size_t>(area.height));
    std::memcpy(pixels.data(), xcb_get_image_data(reply.get()), pixels.size() * sizeof(std::uint32_t));
    for (auto& pixel : pixels)
        pixel &= 0xFFFFFF;
    return pixels;
}

std::vector<xcb_window_t> XClient::children(xcb_window_t window) const {
    const auto tree = REPLY(query_tree, window);
    if (!tree)
        return {};
    const auto* first = xcb_query_tree_children(tree.get());
    return {first, first + tree->children_len};
}

xcb_window_t XClient::frame(xcb_window_t window) const {
    for (auto current = window;;) {
        const auto tree = REPLY(query_tree, current);
        if (!tree || tree->parent == root() || tree->parent == XCB_NONE)
            return current;
        current = tree->parent;
    }
}

xcb_atom_t XClient::atom(const std::string& name) const {
    const auto [known, isNew] = m_atoms.try_emplace(name);
    if (isNew)
        if (const auto reply =
                REPLY(intern_atom, false, static_cast<std::uint16_t>(name.size()), name.data()))
            known->second = reply->atom;
    return known->second;
}

void XClient::send(xcb_window_t window, const std::string& type, std::initializer_list<std::uint32_t> data) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom(type);
    std::ranges::copy(data, message.data.data32);
    xcb_send_event(m_connection, false, root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(m_connection);
}
