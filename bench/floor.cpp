// The least that any client can do, to compare with: nothing is kept safe, nothing is looked at afterwards,
// no setting is touched, and only this desktop's ways are known. Xcb alone; connected before it is told to
// begin.
//   floor       SIGUSR1 turns on, SIGUSR2 off, SIGTERM ends it

#include <xcb/randr.h>
#include <xcb/xcb_renderutil.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};
template <class T>
std::unique_ptr<T, Free> owned(T* reply) {
    return std::unique_ptr<T, Free>(reply);
}

xcb_connection_t* const x = xcb_connect(nullptr, nullptr);
const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(x)).data;

xcb_atom_t atom(const char* name) {
    static std::map<std::string, xcb_atom_t> known;
    auto& value = known[name];
    if (value == XCB_ATOM_NONE)
        value = owned(xcb_intern_atom_reply(
                          x, xcb_intern_atom(x, false, static_cast<std::uint16_t>(std::strlen(name)), name),
                          nullptr))
                    ->atom;
    return value;
}

xcb_get_property_cookie_t ask(xcb_window_t window, xcb_atom_t property) {
    return xcb_get_property(x, false, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 4096);
}

/// Numbers, or the bytes of a text.
template <class T>
std::vector<T> answer(xcb_get_property_cookie_t cookie) {
    const auto reply = owned(xcb_get_property_reply(x, cookie, nullptr));
    if (!reply)
        return {};
    const auto* first = static_cast<const T*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

void tell(xcb_window_t window, xcb_atom_t type, std::uint32_t value) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = type;
    message.data.data32[0] = value;
    xcb_send_event(x, false, screen->root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
}

struct Window {
    xcb_window_t id;
    xcb_get_property_cookie_t type, name;
};

std::vector<xcb_window_t> covers, others, kept; // bottom to top
xcb_window_t active = XCB_NONE;

std::uint32_t formatOf(int depth) {
    static const auto* formats = xcb_render_util_query_formats(x);
    return xcb_render_util_find_standard_format(formats, depth == 32 ? XCB_PICT_STANDARD_ARGB_32
                                                                     : XCB_PICT_STANDARD_RGB_24)
        ->id;
}

void cover(xcb_window_t desktop, xcb_pixmap_t wallpaper, int depth, const xcb_randr_monitor_info_t& place) {
    const auto pixmap = xcb_generate_id(x), window = xcb_generate_id(x), from = xcb_generate_id(x),
               to = xcb_generate_id(x);
    xcb_create_pixmap(x, screen->root_depth, pixmap, screen->root, place.width, place.height);
    xcb_render_create_picture(x, from, wallpaper, formatOf(depth), 0, nullptr);
    xcb_render_create_picture(x, to, pixmap, formatOf(screen->root_depth), 0, nullptr);
    xcb_render_composite(x, XCB_RENDER_PICT_OP_SRC, from, XCB_NONE, to, place.x, place.y, 0, 0, 0, 0,
                         place.width, place.height);
    const std::uint32_t values[] = {pixmap, 0};
    xcb_create_window(x, XCB_COPY_FROM_PARENT, window, desktop, place.x, place.y, place.width, place.height,
                      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL, values);
    xcb_map_window(x, window);
    for (const auto picture : {from, to})
        xcb_render_free_picture(x, picture);
    xcb_free_pixmap(x, pixmap);
    covers.push_back(window);
}

void turnOn() {
    const auto list = ask(screen->root, atom("_NET_CLIENT_LIST_STACKING"));
    const auto front = ask(screen->root, atom("_NET_ACTIVE_WINDOW"));
    const auto pixmap = ask(screen->root, atom("_XROOTPMAP_ID"));
    const auto monitors = xcb_randr_get_monitors(x, screen->root, true);
    std::vector<Window> windows;
    for (const auto id : answer<xcb_window_t>(list))
        windows.push_back({id, ask(id, atom("_NET_WM_WINDOW_TYPE")), ask(id, XCB_ATOM_WM_CLASS)});
    active = answer<xcb_window_t>(front).at(0);
    const auto wallpaper = answer<xcb_pixmap_t>(pixmap).at(0);
    const auto geometry = xcb_get_geometry(x, wallpaper);
    xcb_window_t desktop = XCB_NONE;
    std::map<xcb_window_t, std::vector<char>> ordinary;
    for (const auto& window : windows) {
        const auto types = answer<xcb_atom_t>(window.type);
        auto name = answer<char>(window.name);
        if (std::ranges::count(types, atom("_NET_WM_WINDOW_TYPE_DESKTOP")) > 0)
            desktop = window.id;
        else if (std::ranges::count(types, atom("_NET_WM_WINDOW_TYPE_DOCK")) == 0)
            ordinary[window.id] = std::move(name);
    }
    for (const auto& window : windows)
        if (const auto found = ordinary.find(window.id); found != ordinary.end()) {
            auto& where = found->second == ordinary[active] ? kept : others;
            where.push_back(window.id);
            if (&where == &others)
                tell(window.id, atom("WM_CHANGE_STATE"), 3); // ICCCM, iconic
        }
    const auto depth = owned(xcb_get_geometry_reply(x, geometry, nullptr))->depth;
    const auto places = owned(xcb_randr_get_monitors_reply(x, monitors, nullptr));
    for (auto i = xcb_randr_get_monitors_monitors_iterator(places.get()); i.rem;
         xcb_randr_monitor_info_next(&i))
        cover(desktop, wallpaper, depth, *i.data);
    xcb_flush(x);
}

void activate(xcb_window_t window) {
    tell(window, atom("_NET_ACTIVE_WINDOW"), 2); // EWMH, as a pager
}

bool isActive(xcb_window_t window) {
    return answer<xcb_window_t>(ask(screen->root, atom("_NET_ACTIVE_WINDOW"))).at(0) == window;
}

// This window manager leaves the focus to the last that came back, unless that is waited for.
void turnOff() {
    for (const auto window : std::exchange(covers, {}))
        xcb_destroy_window(x, window);
    std::ranges::for_each(others, activate);
    xcb_flush(x);
    while (!others.empty() && !isActive(others.back()))
        owned(xcb_wait_for_event(x));
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    for (const auto window : kept)
        xcb_configure_window(x, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    activate(active);
    xcb_flush(x);
    others.clear();
    kept.clear();
}

} // namespace

int main() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGUSR1, SIGUSR2, SIGTERM})
        sigaddset(&signals, number);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    for (const auto* name :
         {"_NET_CLIENT_LIST_STACKING", "_NET_ACTIVE_WINDOW", "_XROOTPMAP_ID", "WM_CHANGE_STATE",
          "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DESKTOP", "_NET_WM_WINDOW_TYPE_DOCK"})
        atom(name);
    formatOf(32);
    const std::uint32_t changes = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(x, screen->root, XCB_CW_EVENT_MASK, &changes);
    for (int number = 0; sigwait(&signals, &number) == 0 && number != SIGTERM;)
        number == SIGUSR1 ? turnOn() : turnOff();
    xcb_disconnect(x);
}
