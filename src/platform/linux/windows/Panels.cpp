#include "platform/linux/windows/Panels.h"

#include "platform/linux/windows/PanelGeometry.h"
#include "platform/linux/x11/XConnection.h"

#include <QCursor>
#include <QGuiApplication>
#include <QRect>
#include <QScreen>

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace tavro {

namespace {

/// Those of the windows that are panels; all are asked at once.
std::vector<xcb_window_t> panelsAmong(const XConnection& x, const std::vector<xcb_window_t>& windows) {
    std::vector<xcb_get_property_cookie_t> requests;
    for (const auto window : windows)
        requests.push_back(x.request(window, x.atoms().netWmWindowType));
    std::vector<xcb_window_t> panels;
    for (std::size_t i = 0; i < windows.size(); ++i)
        if (std::ranges::count(x.values(requests[i]), x.atoms().netWmWindowTypeDock) > 0)
            panels.push_back(windows[i]);
    return panels;
}

/// The windows in all frames.
std::vector<xcb_window_t> framedWindows(const XConnection& x) {
    std::vector<xcb_query_tree_cookie_t> requests;
    std::vector<xcb_window_t> windows;
    const auto collect = [&](xcb_query_tree_cookie_t request) {
        const XReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(x.raw(), request, nullptr));
        if (tree)
            std::copy_n(xcb_query_tree_children(tree.get()), tree->children_len, std::back_inserter(windows));
    };
    collect(xcb_query_tree(x.raw(), x.root()));
    for (const auto frame : std::exchange(windows, {}))
        requests.push_back(xcb_query_tree(x.raw(), frame));
    for (const auto& request : requests)
        collect(request);
    return windows;
}

/// Some window managers leave them out of their list: then they are looked for in all frames.
std::vector<xcb_window_t> panelWindows(const XConnection& x) {
    auto panels = panelsAmong(x, x.values(x.request(x.root(), x.atoms().netClientListStacking)));
    return panels.empty() ? panelsAmong(x, framedWindows(x)) : panels;
}

QRect placeOf(const XConnection& x, xcb_window_t window) {
    const auto geometryCookie = xcb_get_geometry(x.raw(), window);
    const auto originCookie = xcb_translate_coordinates(x.raw(), window, x.root(), 0, 0);
    const XReply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(x.raw(), geometryCookie, nullptr));
    const XReply<xcb_translate_coordinates_reply_t> origin(
        xcb_translate_coordinates_reply(x.raw(), originCookie, nullptr));
    if (!geometry || !origin)
        return {};
    return {origin->dst_x, origin->dst_y, geometry->width, geometry->height};
}

struct Panel {
    xcb_window_t window = XCB_NONE;
    QRect place; // the part of the screen that it takes, in the toolkit's coordinates
};

/// What is left of each screen where the window manager draws the panels itself: some of them say it.
std::vector<QRect> workAreas(const XConnection& x) {
    const auto workspace = x.value(x.request(x.root(), x.atoms().netCurrentDesktop)).value_or(0);
    const auto numbers =
        x.values(x.request(x.root(), x.atom("_GTK_WORKAREAS_D" + std::to_string(workspace))));
    std::vector<QRect> areas;
    for (std::size_t i = 0; i + 4 <= numbers.size(); i += 4)
        areas.emplace_back(static_cast<int>(numbers[i]), static_cast<int>(numbers[i + 1]),
                           static_cast<int>(numbers[i + 2]), static_cast<int>(numbers[i + 3]));
    return areas;
}

std::vector<Panel> panelsOn(const XConnection& x, const QScreen& screen) {
    std::vector<Panel> panels;
    for (const auto window : panelWindows(x)) {
        const auto place = partOfScreen(placeOf(x, window), screen.geometry(), screen.devicePixelRatio());
        if (!place.isEmpty())
            panels.push_back({window, place});
    }
    return panels;
}

/// The main screen is the first.
std::vector<ScreenWithPanels> screensWithPanels(const XConnection& x) {
    std::vector<ScreenWithPanels> screens;
    for (const auto* screen : QGuiApplication::screens()) {
        auto& entry = screens.emplace_back(ScreenWithPanels{screen->geometry(), {}});
        for (const auto& panel : panelsOn(x, *screen))
            entry.panels.push_back(panel.place);
    }
    const bool hasPanels =
        std::ranges::any_of(screens, [](const auto& each) { return !each.panels.empty(); });
    const auto areas = hasPanels ? std::vector<QRect>() : workAreas(x);
    for (std::size_t i = 0; i < screens.size() && !areas.empty(); ++i)
        for (const auto& area : areas)
            if (const auto part =
                    partOfScreen(area, screens[i].area,
                                 QGuiApplication::screens()[static_cast<qsizetype>(i)]->devicePixelRatio());
                !part.isEmpty())
                screens[i].panels = stripsAround(part, screens[i].area);
    return screens;
}

} // namespace

QRect besidePanel(const XConnection& x, QPoint point, QSize size) {
    return besidePanel(screensWithPanels(x), point, size);
}

QPoint trayPlace(const XConnection& x) {
    return trayPlace(screensWithPanels(x), QCursor::pos());
}

PanelWatch::PanelWatch(XConnection& x, QPoint point, std::function<void()> left)
    : m_x(x)
    , m_left(std::move(left)) {
    const auto* screen = QGuiApplication::screenAt(point);
    const auto panels = screen ? panelsOn(x, *screen) : std::vector<Panel>();
    const auto panel =
        std::ranges::find_if(panels, [&](const auto& each) { return each.place.contains(point); });
    if (screen && panels.empty())
        m_arrival = x.onPropertyChange(x.root(), x.atoms().netClientListStacking, [this, point] {
            const auto* around = QGuiApplication::screenAt(point);
            if (around && !panelsOn(m_x, *around).empty())
                leave();
        });
    if (panel == panels.end())
        return;
    m_panel = panel->window;
    m_edge = QRegion(screen->geometry()).subtracted(areaBeside(panel->place, screen->geometry()));
    m_moves = x.on(XEvents::configureNotify, [this](const auto& event) {
        if (event.window == m_panel)
            panelMoved();
    });
    m_end = x.on(XEvents::destroyNotify, [this](const auto& event) {
        if (event.window == m_panel)
            leave();
    });
    select(XCB_EVENT_MASK_STRUCTURE_NOTIFY);
}

PanelWatch::~PanelWatch() {
    select(XCB_EVENT_MASK_NO_EVENT);
}

void PanelWatch::select(std::uint32_t mask) {
    if (m_panel == XCB_NONE)
        return;
    xcb_change_window_attributes(m_x.raw(), m_panel, XCB_CW_EVENT_MASK, &mask);
    m_x.flush();
}

// One that hides itself slides out of the screen and comes back.
void PanelWatch::panelMoved() {
    const auto pixels = placeOf(m_x, m_panel);
    QRegion visible;
    for (const auto* screen : QGuiApplication::screens())
        visible += partOfScreen(pixels, screen->geometry(), screen->devicePixelRatio());
    if (!visible.subtracted(m_edge).isEmpty())
        leave();
}

// Nothing of this object is touched any more once it has reported.
void PanelWatch::leave() {
    const auto left = std::exchange(m_left, nullptr);
    if (left)
        left();
}

} // namespace tavro
