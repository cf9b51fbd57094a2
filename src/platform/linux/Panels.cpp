#include "platform/linux/Panels.h"

#include "platform/linux/XConnection.h"

#include <QCursor>
#include <QGuiApplication>
#include <QRect>
#include <QScreen>

#include <algorithm>
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

/// The parts of the screen that panels take, in the toolkit's coordinates.
std::vector<QRect> panelsOn(const XConnection& x, const QScreen& screen) {
    const auto corner = screen.geometry().topLeft();
    const auto scale = screen.devicePixelRatio();
    std::vector<QRect> panels;
    for (const auto window : x.values(x.request(x.root(), x.atoms().netClientListStacking))) {
        if (!isPanel(x, window))
            continue;
        const auto pixels = placeOf(x, window).translated(-corner);
        const QRect panel(corner + (QPointF(pixels.topLeft()) / scale).toPoint(),
                          (QSizeF(pixels.size()) / scale).toSize());
        if (panel.intersects(screen.geometry()))
            panels.push_back(panel.intersected(screen.geometry()));
    }
    return panels;
}

/// The part of the screen that a panel takes there, in the toolkit's coordinates; empty where there is none.
QRect panelAt(const XConnection& x, QPoint point, const QScreen& screen) {
    const auto panels = panelsOn(x, screen);
    const auto found = std::ranges::find_if(panels, [&](const auto& panel) { return panel.contains(point); });
    return found == panels.end() ? QRect() : *found;
}

QPoint beside(const QRect& panel, QPoint point, QSize size, QPoint middle) {
    const QPoint centred = point - QPoint(size.width() / 2, size.height() / 2);
    if (panel.width() >= panel.height())
        return {centred.x(),
                panel.center().y() < middle.y() ? panel.bottom() + 1 : panel.top() - size.height()};
    return {panel.center().x() < middle.x() ? panel.right() + 1 : panel.left() - size.width(), centred.y()};
}

} // namespace

QPoint besidePanel(const XConnection& x, QPoint point, QSize size) {
    const auto* screen = QGuiApplication::screenAt(point);
    if (!screen)
        return point;
    const auto area = screen->geometry();
    const auto panel = panelAt(x, point, *screen);
    const auto place = panel.isEmpty() ? point : beside(panel, point, size, area.center());
    const auto within = [](int value, int least, int most) { return std::max(least, std::min(value, most)); };
    return {within(place.x(), area.left(), area.right() + 1 - size.width()),
            within(place.y(), area.top(), area.bottom() + 1 - size.height())};
}

QPoint trayPlace(const XConnection& x) {
    const auto pointer = QCursor::pos();
    const auto* screen = QGuiApplication::screenAt(pointer);
    if (screen && !panelAt(x, pointer, *screen).isEmpty())
        return pointer;
    screen = QGuiApplication::primaryScreen();
    if (!screen)
        return {};
    constexpr int fromEnd = 14; // the middle of an item
    const auto panels = panelsOn(x, *screen);
    if (panels.empty())
        return screen->geometry().topRight();
    const auto& panel = panels.front();
    return panel.width() >= panel.height() ? QPoint(panel.right() - fromEnd, panel.center().y())
                                           : QPoint(panel.center().x(), panel.bottom() - fromEnd);
}

} // namespace tavro
