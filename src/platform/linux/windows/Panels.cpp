#include "platform/linux/windows/Panels.h"

#include "platform/linux/x11/XConnection.h"

#include <QCursor>
#include <QGuiApplication>
#include <QRect>
#include <QScreen>

#include <algorithm>
#include <utility>
#include <vector>

namespace tavro {

namespace {

bool isPanel(const XConnection& x, xcb_window_t window) {
    const auto types = x.values(x.request(window, x.atoms().netWmWindowType));
    return std::ranges::find(types, x.atoms().netWmWindowTypeDock) != types.end();
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

QRect partOfScreen(const QRect& rootPixels, const QScreen& screen) {
    const auto corner = screen.geometry().topLeft();
    const auto scale = screen.devicePixelRatio();
    const auto pixels = rootPixels.translated(-corner);
    const QRect place(corner + (QPointF(pixels.topLeft()) / scale).toPoint(),
                      (QSizeF(pixels.size()) / scale).toSize());
    return place.intersected(screen.geometry());
}

std::vector<Panel> panelsOn(const XConnection& x, const QScreen& screen) {
    std::vector<Panel> panels;
    for (const auto window : x.values(x.request(x.root(), x.atoms().netClientListStacking))) {
        const auto place = isPanel(x, window) ? partOfScreen(placeOf(x, window), screen) : QRect();
        if (!place.isEmpty())
            panels.push_back({window, place});
    }
    return panels;
}

/// The panel at a point of the screen; one without a window where there is none.
Panel panelAt(const XConnection& x, QPoint point, const QScreen& screen) {
    const auto panels = panelsOn(x, screen);
    const auto found =
        std::ranges::find_if(panels, [&](const auto& panel) { return panel.place.contains(point); });
    return found == panels.end() ? Panel() : *found;
}

bool isHorizontal(const QRect& panel) {
    return panel.width() >= panel.height();
}

/// The screen without the strip along its edge that the panel takes a part of.
QRect areaBeside(const QRect& panel, const QRect& screen) {
    auto area = screen;
    if (isHorizontal(panel) && panel.center().y() < screen.center().y())
        area.setTop(panel.bottom() + 1);
    else if (isHorizontal(panel))
        area.setBottom(panel.top() - 1);
    else if (panel.center().x() < screen.center().x())
        area.setLeft(panel.right() + 1);
    else
        area.setRight(panel.left() - 1);
    return area;
}

} // namespace

QRect besidePanel(const XConnection& x, QPoint point, QSize size) {
    const auto* screen = QGuiApplication::screenAt(point);
    if (!screen)
        return {point, size};
    const auto panel = panelAt(x, point, *screen).place;
    const auto area = panel.isEmpty() ? screen->geometry() : areaBeside(panel, screen->geometry());
    const auto fitting = size.boundedTo(area.size());
    const auto corner = panel.isEmpty() ? point : point - QPoint(fitting.width() / 2, fitting.height() / 2);
    return {QPoint(std::clamp(corner.x(), area.left(), area.right() + 1 - fitting.width()),
                   std::clamp(corner.y(), area.top(), area.bottom() + 1 - fitting.height())),
            fitting};
}

QPoint trayPlace(const XConnection& x) {
    const auto pointer = QCursor::pos();
    const auto* pointed = QGuiApplication::screenAt(pointer);
    if (pointed && !panelAt(x, pointer, *pointed).place.isEmpty())
        return pointer;
    constexpr int fromEnd = 14;                             // the middle of an item
    for (const auto* screen : QGuiApplication::screens()) { // the main one is the first
        const auto panels = panelsOn(x, *screen);
        if (panels.empty())
            continue;
        const auto& place = panels.front().place;
        return isHorizontal(place) ? QPoint(place.right() - fromEnd, place.center().y())
                                   : QPoint(place.center().x(), place.bottom() - fromEnd);
    }
    const auto* main = QGuiApplication::primaryScreen();
    return main ? main->geometry().topRight() : QPoint();
}

PanelWatch::PanelWatch(XConnection& x, QPoint point, std::function<void()> left)
    : m_x(x)
    , m_left(std::move(left)) {
    const auto* screen = QGuiApplication::screenAt(point);
    const auto panel = screen ? panelAt(x, point, *screen) : Panel();
    if (panel.place.isEmpty())
        return;
    m_panel = panel.window;
    m_edge = QRegion(screen->geometry()).subtracted(areaBeside(panel.place, screen->geometry()));
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
    m_x.deliverQueuedEvents();
    QRegion visible;
    for (const auto* screen : QGuiApplication::screens())
        visible += partOfScreen(pixels, *screen);
    if (!visible.subtracted(m_edge).isEmpty())
        leave();
}

// Nothing of this object is touched any more once it has told.
void PanelWatch::leave() {
    const auto left = std::exchange(m_left, nullptr);
    if (left)
        left();
}

} // namespace tavro
