#include "platform/linux/windows/XWindowList.h"

#include "platform/linux/windows/DesktopSnapshot.h"
#include "platform/linux/windows/DesktopWallpaper.h"
#include "platform/linux/windows/QtScreens.h"
#include "platform/linux/windows/XPixmap.h"

#include <algorithm>
#include <ranges>

namespace tavro {

std::optional<PropertyList::Array> XWindowList::copyWindowInfo(unsigned options,
                                                               WindowNumber relativeTo) const {
    const auto snapshot = m_snapshots.current();
    std::vector<xcb_window_t> windows;
    for (const auto& window : snapshot->clients.windows | std::views::reverse)
        windows.push_back(window.id);
    if (options & WindowListOption::onScreenBelowWindow) {
        // A window that is not in the list yet has at least the wallpaper below it.
        const auto given = std::ranges::find(windows, static_cast<xcb_window_t>(relativeTo));
        windows.erase(windows.begin(), given == windows.end() ? given : given + 1);
    }
    auto entries = describe(windows);
    const auto& pixmap = snapshot->wallpaper;
    const bool isOurs = m_wallpaper.hasOwnPictures() && !(pixmap && pixmap->isWhole);
    if (pixmap || isOurs)
        entries.push_back(
            PropertyList::Dictionary{{WindowListKey::ownerName, "Dock"},
                                     {WindowListKey::name, "Wallpaper-"},
                                     {WindowListKey::number, isOurs ? m_x.root() : pixmap->number}});
    return entries;
}

PropertyList::Array XWindowList::describe(const std::vector<xcb_window_t>& frontToBack) const {
    struct Cookies {
        xcb_window_t window;
        xcb_get_property_cookie_t wmClass, name, oldName, state;
    };
    std::vector<Cookies> requests;
    requests.reserve(frontToBack.size());
    for (const auto window : frontToBack)
        requests.push_back({window, m_x.request(window, XCB_ATOM_WM_CLASS),
                            m_x.request(window, m_x.atoms().netWmName), m_x.request(window, XCB_ATOM_WM_NAME),
                            m_x.request(window, m_x.atoms().netWmState)});
    PropertyList::Array entries;
    for (const auto& request : requests) {
        const auto owner = className(m_x.text(request.wmClass));
        const auto name = m_x.text(request.name);
        const auto oldName = m_x.text(request.oldName); // ICCCM, of programs that do not know EWMH
        const auto states = m_x.values(request.state);
        if (std::ranges::find(states, m_x.atoms().netWmStateHidden) == states.end())
            entries.push_back(PropertyList::Dictionary{{WindowListKey::ownerName, owner},
                                                       {WindowListKey::name, name.empty() ? oldName : name},
                                                       {WindowListKey::number, request.window}});
    }
    return entries;
}

// A cover asks for it: then is the time to look whether it is still the desktop's.
std::optional<Image> XWindowList::createImage(Rect area, unsigned, WindowNumber window, unsigned) const {
    const auto part = QtScreens::rootPixels(area);
    if (part.isEmpty())
        return std::nullopt;
    m_wallpaper.renewSoon();
    const auto number = static_cast<xcb_drawable_t>(window);
    auto image = number == m_x.root() ? m_wallpaper.ownPicture(part) : pictureOf(number, part);
    if (image)
        image->size = area.size;
    return image;
}

std::optional<Image> XWindowList::pictureOf(xcb_pixmap_t number, const QRect& part) const {
    const auto pixmap = m_wallpaper.pixmap();
    if (!pixmap || pixmap->number != number)
        return std::nullopt;
    Image image;
    image.pixelWidth = part.width();
    image.pixelHeight = part.height();
    image.onServer = std::make_shared<const XServerImage>(number, pixmap->depth, part);
    return image;
}

} // namespace tavro
