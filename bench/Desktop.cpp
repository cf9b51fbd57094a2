#include "Desktop.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <ranges>
#include <stdexcept>
#include <xcb/damage.h>
#include <xcb/randr.h>
#include <xcb/xtest.h>

namespace bench {

namespace {

/// How long nothing must happen for the last change to have been the last.
constexpr std::chrono::milliseconds quiet{400};
constexpr std::chrono::seconds deadline{6};
constexpr std::uint32_t colors = 0xFFFFFF;

template <class T>
std::unique_ptr<T, decltype(&std::free)> owned(T* reply) {
    return {reply, &std::free};
}

} // namespace

Desktop::Desktop()
    : m_connection(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(m_connection))
        throw std::runtime_error("There is no X display");
    m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
    m_stacking = atom("_NET_CLIENT_LIST_STACKING");
    m_active = atom("_NET_ACTIVE_WINDOW");
    m_windowState = atom("_NET_WM_STATE");
    m_hidden = atom("_NET_WM_STATE_HIDDEN");
    m_skipTaskbar = atom("_NET_WM_STATE_SKIP_TASKBAR");
    m_type = atom("_NET_WM_WINDOW_TYPE");
    m_typeDesktop = atom("_NET_WM_WINDOW_TYPE_DESKTOP");
    m_typeDock = atom("_NET_WM_WINDOW_TYPE_DOCK");
    m_wallpaper = atom("_XROOTPMAP_ID");
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection, m_screen->root, XCB_CW_EVENT_MASK, &mask);
    // The root window's damage is that of all windows on all screens.
    const auto* extension = xcb_get_extension_data(m_connection, &xcb_damage_id);
    const auto version = owned(
        xcb_damage_query_version_reply(m_connection, xcb_damage_query_version(m_connection, 1, 1), nullptr));
    if (!extension->present || !version)
        throw std::runtime_error("The X server does not report damage");
    m_damageEvent = static_cast<std::uint8_t>(extension->first_event + XCB_DAMAGE_NOTIFY);
    xcb_damage_create(m_connection, xcb_generate_id(m_connection), m_screen->root,
                      XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    watchClients();
}

Desktop::~Desktop() {
    xcb_disconnect(m_connection);
}

xcb_atom_t Desktop::atom(const char* name) const {
    const auto length = static_cast<std::uint16_t>(std::strlen(name));
    const auto reply = owned(
        xcb_intern_atom_reply(m_connection, xcb_intern_atom(m_connection, false, length, name), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::vector<std::uint32_t> Desktop::values(xcb_window_t window, xcb_atom_t property) const {
    constexpr std::uint32_t most = 4096;
    const auto reply = owned(xcb_get_property_reply(
        m_connection, xcb_get_property(m_connection, false, window, property, XCB_ATOM_ANY, 0, most),
        nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

std::string Desktop::className(xcb_window_t window) const {
    constexpr std::uint32_t most = 256;
    const auto reply = owned(xcb_get_property_reply(
        m_connection,
        xcb_get_property(m_connection, false, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, most), nullptr));
    if (!reply)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
}

bool Desktop::has(xcb_window_t window, xcb_atom_t property, xcb_atom_t value) const {
    return std::ranges::count(values(window, property), value) > 0;
}

bool Desktop::isApplicationWindow(xcb_window_t window) const {
    return !has(window, m_type, m_typeDesktop) && !has(window, m_type, m_typeDock) &&
           !has(window, m_windowState, m_skipTaskbar);
}

/// With the window manager's decoration.
Area Desktop::frame(xcb_window_t window) const {
    while (true) {
        const auto tree =
            owned(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, window), nullptr));
        if (!tree)
            return {};
        if (tree->parent == tree->root)
            break;
        window = tree->parent;
    }
    const auto box =
        owned(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr));
    return box ? Area{box->x, box->y, box->width, box->height} : Area{};
}

std::vector<Area> Desktop::panelAreas() const {
    std::vector<Area> areas;
    for (const auto window : values(m_screen->root, m_stacking))
        if (has(window, m_type, m_typeDock))
            areas.push_back(frame(window));
    return areas;
}

std::vector<Area> Desktop::screens() const {
    const auto reply = owned(xcb_randr_get_monitors_reply(
        m_connection, xcb_randr_get_monitors(m_connection, m_screen->root, true), nullptr));
    if (!reply)
        throw std::runtime_error("The X server does not tell its screens");
    std::vector<Area> areas;
    for (auto monitor = xcb_randr_get_monitors_monitors_iterator(reply.get()); monitor.rem > 0;
         xcb_randr_monitor_info_next(&monitor))
        areas.push_back({monitor.data->x, monitor.data->y, monitor.data->width, monitor.data->height});
    return areas;
}

Picture Desktop::capture(xcb_drawable_t drawable) const {
    const auto size =
        owned(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, m_screen->root), nullptr));
    const auto reply =
        owned(xcb_get_image_reply(m_connection,
                                  xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, 0, 0,
                                                size->width, size->height, ~0u),
                                  nullptr));
    if (!reply)
        return {};
    Picture picture(std::size_t{size->width} * size->height);
    if (static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) !=
        picture.size() * sizeof(picture[0]))
        throw std::runtime_error("The X server's pixels are not of 32 bits");
    std::memcpy(picture.data(), xcb_get_image_data(reply.get()), picture.size() * sizeof(picture[0]));
    std::ranges::for_each(picture, [](auto& pixel) { pixel &= colors; });
    return picture;
}

void Desktop::black(Picture& picture, const std::vector<Area>& areas) const {
    const auto size =
        owned(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, m_screen->root), nullptr));
    if (picture.empty())
        return;
    for (const auto& area : areas) {
        const int left = std::clamp<int>(area.x, 0, size->width);
        const int right = std::clamp<int>(area.x + area.width, left, size->width);
        for (int y = std::max(area.y, 0); y < std::min<int>(area.y + area.height, size->height); ++y)
            std::fill_n(picture.begin() + y * size->width + left, right - left, 0);
    }
}

/// Screens need not fill the root window.
Picture Desktop::onScreensOnly(const Picture& picture) const {
    auto others = picture;
    black(others, screens());
    auto visible = picture;
    std::ranges::transform(visible, others, visible.begin(),
                           [](auto all, auto outside) { return all ^ outside; });
    return visible;
}

Desktop::State Desktop::state() {
    State state{values(m_screen->root, m_stacking), XCB_NONE, {}, onScreensOnly(capture(m_screen->root))};
    if (const auto active = values(m_screen->root, m_active); !active.empty())
        state.active = active.front();
    std::ranges::copy_if(state.stacking, std::back_inserter(state.minimised),
                         [this](auto window) { return has(window, m_windowState, m_hidden); });
    black(state.picture, panelAreas()); // its buttons show what is minimised, and where the pointer is
    return state;
}

bool Desktop::isPresentable(const State& before) {
    const auto kept = className(before.active);
    auto hiding = panelAreas();
    for (const auto window : before.stacking) {
        if (!isApplicationWindow(window))
            continue;
        if (className(window) == kept)
            hiding.push_back(frame(window));
        else if (!has(window, m_windowState, m_hidden))
            return false;
    }
    const auto wallpaper = values(m_screen->root, m_wallpaper);
    if (wallpaper.empty())
        throw std::runtime_error("The desktop does not tell its wallpaper");
    auto wanted = onScreensOnly(capture(wallpaper.front()));
    auto visible = onScreensOnly(capture(m_screen->root));
    black(wanted, hiding);
    black(visible, hiding);
    return !wanted.empty() && wanted == visible;
}

void Desktop::watchClients() const {
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    for (const auto window : values(m_screen->root, m_stacking))
        xcb_change_window_attributes(m_connection, window, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(m_connection);
}

bool Desktop::isChange(const xcb_generic_event_t& event) const {
    const auto type = event.response_type & 0x7F;
    if (type == m_damageEvent)
        return true;
    if (type != XCB_PROPERTY_NOTIFY)
        return false;
    const auto atom = reinterpret_cast<const xcb_property_notify_event_t&>(event).atom;
    return atom == m_stacking || atom == m_active || atom == m_windowState;
}

Clock::time_point Desktop::settle(Clock::time_point since, const std::string& what,
                                  const std::function<bool()>& condition) {
    auto last = since, quietSince = Clock::now();
    while (true) {
        while (const auto event = owned(xcb_poll_for_event(m_connection)))
            if (isChange(*event))
                last = quietSince = Clock::now();
        if (xcb_connection_has_error(m_connection))
            throw std::runtime_error("The X server has gone");
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(quietSince + quiet - Clock::now());
        pollfd readable{xcb_get_file_descriptor(m_connection), POLLIN, 0};
        if (left.count() > 0) {
            ::poll(&readable, 1, static_cast<int>(left.count()));
            continue;
        }
        if (condition())
            return last;
        if (Clock::now() > since + deadline)
            throw std::runtime_error("The desktop has not come to the state that was wanted: " + what);
        quietSince = Clock::now();
    }
}

void Desktop::settle() {
    settle(Clock::now(), "rest", [] { return true; });
}

void Desktop::movePointer(int x, int y) {
    xcb_test_fake_input(m_connection, XCB_MOTION_NOTIFY, false, XCB_CURRENT_TIME, m_screen->root,
                        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    xcb_flush(m_connection);
}

Clock::time_point Desktop::click(std::uint8_t button) {
    const auto start = Clock::now();
    for (const auto type : {std::uint8_t{XCB_BUTTON_PRESS}, std::uint8_t{XCB_BUTTON_RELEASE}})
        xcb_test_fake_input(m_connection, type, button, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_flush(m_connection);
    return start;
}

void Desktop::pressEscape() {
    constexpr std::uint8_t escape = 9; // in every keyboard layout
    for (const auto type : {std::uint8_t{XCB_KEY_PRESS}, std::uint8_t{XCB_KEY_RELEASE}})
        xcb_test_fake_input(m_connection, type, escape, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_flush(m_connection);
    settle();
}

void Desktop::parkPointer() {
    const auto area = screens().back();
    movePointer(area.x + area.width - 2, area.y + area.height - 2);
    settle();
}

Picture Desktop::panels() {
    const auto whole = capture(m_screen->root);
    auto others = whole;
    black(others, panelAreas());
    auto panels = whole;
    std::ranges::transform(panels, others, panels.begin(),
                           [](auto all, auto outside) { return all ^ outside; });
    return panels;
}

Area Desktop::newestItem(const Picture& panelsBefore) {
    const auto now = panels();
    const auto size =
        owned(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, m_screen->root), nullptr));
    int right = -1;
    for (std::size_t i = 0; i < now.size(); ++i)
        if (now[i] != panelsBefore[i])
            right = std::max(right, static_cast<int>(i % size->width));
    const auto areas = panelAreas();
    if (right < 0 || areas.empty())
        throw std::runtime_error("No item came to the panel");
    const auto& panel = areas.front();
    const int half = panel.height / 2;
    return {right - half / 2, panel.y + half, 1, 1};
}

} // namespace bench
