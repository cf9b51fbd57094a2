#include "platform/linux/windows/DesktopSnapshot.h"

#include "platform/linux/x11/XConnection.h"

#include <algorithm>

namespace tavro {

namespace {

using Geometry = XReply<xcb_get_geometry_reply_t>;

Geometry answer(const XConnection& x, xcb_get_geometry_cookie_t request) {
    return Geometry(xcb_get_geometry_reply(x.raw(), request, nullptr));
}

// The number stays on the root window when the desktop that made the pixmap has died, and some desktops leave
// one of a single screen.
std::optional<RootPixmap> wallpaper(const XConnection& x, xcb_pixmap_t number, const Geometry& root) {
    const auto size = answer(x, xcb_get_geometry(x.raw(), number));
    if (!size || !root)
        return std::nullopt;
    return RootPixmap{number, size->depth, size->width >= root->width && size->height >= root->height};
}

} // namespace

DesktopSnapshot DesktopSnapshot::read(const XConnection& x) {
    const auto pixmap = x.request(x.root(), x.atoms().xrootpmapId);
    const auto root = xcb_get_geometry(x.raw(), x.root());
    DesktopSnapshot snapshot{ClientList::read(x), {}, {}};
    snapshot.wallpaper = tavro::wallpaper(x, x.value(pixmap).value_or(XCB_NONE), answer(x, root));
    std::vector<xcb_window_t> desktopWindows;
    for (const auto& window : snapshot.clients.windows)
        if (window.isDesktop)
            desktopWindows.push_back(window.id);
    snapshot.desktopWindows = placesOf(x, desktopWindows);
    return snapshot;
}

std::vector<DesktopWindow> DesktopSnapshot::placesOf(const XConnection& x,
                                                     const std::vector<xcb_window_t>& desktopWindows) {
    struct Cookies {
        xcb_window_t window;
        xcb_get_geometry_cookie_t geometry;
        xcb_translate_coordinates_cookie_t corner;
    };
    std::vector<Cookies> requests;
    for (const auto window : desktopWindows)
        requests.push_back({window, xcb_get_geometry(x.raw(), window),
                            xcb_translate_coordinates(x.raw(), window, x.root(), 0, 0)});
    std::vector<DesktopWindow> windows;
    for (const auto& request : requests) {
        const auto size = answer(x, request.geometry);
        const XReply<xcb_translate_coordinates_reply_t> corner(
            xcb_translate_coordinates_reply(x.raw(), request.corner, nullptr));
        if (size && corner)
            windows.push_back(
                {request.window, size->depth, {corner->dst_x, corner->dst_y, size->width, size->height}});
    }
    return windows;
}

std::shared_ptr<const DesktopSnapshot> DesktopSnapshots::read() {
    m_current = std::make_shared<const DesktopSnapshot>(DesktopSnapshot::read(m_x));
    m_forgetting.schedule();
    return m_current;
}

} // namespace tavro
