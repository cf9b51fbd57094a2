#include "platform/linux/windows/QtScreens.h"

#include "platform/linux/x11/XConnection.h"

#include <QGuiApplication>
#include <QScreen>

#include <xcb/randr.h>

namespace tavro {

namespace {

/// The corner of the first screen that display coordinates start from.
QPoint displayOrigin() {
    const auto* primary = QGuiApplication::primaryScreen();
    return primary ? primary->geometry().topLeft() : QPoint();
}

/// At scales like 1.75 the pixels of a screen are no whole number of points, and the toolkit rounds them: the
/// RandR monitor has the exact number. The toolkit leaves its corner where the server has it.
QSizeF exactSize(const QScreen& screen) {
    const auto rounded = screen.geometry();
    const auto scale = screen.devicePixelRatio();
    if (scale == 1)
        return rounded.size();
    auto* x = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
    const XReply<xcb_randr_get_monitors_reply_t> reply(
        xcb_randr_get_monitors_reply(x, xcb_randr_get_monitors(x, root, true), nullptr));
    for (auto i = xcb_randr_get_monitors_monitors_iterator(reply.get()); reply && i.rem;
         xcb_randr_monitor_info_next(&i)) {
        const auto size = QSizeF(i.data->width, i.data->height) / scale;
        if (QPoint(i.data->x, i.data->y) == rounded.topLeft() && size.toSize() == rounded.size())
            return size;
    }
    return rounded.size();
}

QRectF exactPlace(const QScreen& screen) {
    return {screen.geometry().topLeft(), exactSize(screen)};
}

QRect pixelsOf(const QRectF& toolkitArea) {
    const auto corner = toolkitArea.topLeft();
    const auto* screen = QGuiApplication::screenAt(corner.toPoint());
    if (!screen)
        return {};
    const auto scale = screen->devicePixelRatio();
    const QPointF screenCorner = screen->geometry().topLeft();
    return {(screenCorner + (corner - screenCorner) * scale).toPoint(),
            (toolkitArea.size() * scale).toSize()};
}

/// What the toolkit puts in place of a screen when there is none.
bool isPlaceholder(const QScreen& screen) {
    return screen.name().isEmpty() || screen.geometry().isEmpty();
}

} // namespace

std::vector<Screen> QtScreens::screens() const {
    std::vector<Screen> result;
    const auto* primary = QGuiApplication::primaryScreen();
    if (primary && !isPlaceholder(*primary))
        result.push_back(describe(*primary));
    for (const auto* screen : QGuiApplication::screens())
        if (screen != primary && !isPlaceholder(*screen))
            result.push_back(describe(*screen));
    return result;
}

std::optional<Screen> QtScreens::mainScreen() const {
    const auto* active = activeScreen();
    const auto* screen = active ? active : QGuiApplication::primaryScreen();
    if (!screen || isPlaceholder(*screen))
        return std::nullopt;
    return describe(*screen);
}

/// Where most of the window with the focus stands, whoever's it is; null where there is none.
const QScreen* QtScreens::activeScreen() const {
    const auto window = m_x.value(m_x.request(m_x.root(), m_x.atoms().netActiveWindow)).value_or(XCB_NONE);
    const auto sizeCookie = xcb_get_geometry(m_x.raw(), window);
    const auto placeCookie = xcb_translate_coordinates(m_x.raw(), window, m_x.root(), 0, 0);
    const XReply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(m_x.raw(), sizeCookie, nullptr));
    const XReply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(m_x.raw(), placeCookie, nullptr));
    if (!size || !place)
        return nullptr;
    const QRect pixels(place->dst_x, place->dst_y, size->width, size->height);
    const QScreen* found = nullptr;
    qint64 most = 0;
    for (const auto* screen : QGuiApplication::screens()) {
        const auto geometry = screen->geometry();
        const QRect ofScreen(geometry.topLeft(), geometry.size() * screen->devicePixelRatio());
        const auto common = pixels & ofScreen;
        const auto area = qint64{common.width()} * common.height();
        if (!common.isEmpty() && area > most) {
            most = area;
            found = screen;
        }
    }
    return found;
}

std::optional<DisplayID> QtScreens::mainDisplayID() const {
    const auto* screen = QGuiApplication::primaryScreen();
    if (!screen || isPlaceholder(*screen))
        return std::nullopt;
    return identifier(*screen);
}

Rect QtScreens::displayBounds(DisplayID display) const {
    for (const auto* screen : QGuiApplication::screens()) {
        if (isPlaceholder(*screen) || identifier(*screen) != display)
            continue;
        const auto corner = screen->geometry().topLeft() - displayOrigin();
        const auto size = exactSize(*screen);
        return {{double(corner.x()), double(corner.y())}, {size.width(), size.height()}};
    }
    return {};
}

std::string QtScreens::connector(const Screen& screen) const {
    for (const auto* candidate : QGuiApplication::screens())
        if (describe(*candidate) == screen)
            return candidate->name().toStdString();
    return {};
}

QRect QtScreens::rootPixels(const Rect& area) {
    return pixelsOf(
        {QPointF(area.origin.x, area.origin.y) + displayOrigin(), QSizeF(area.size.width, area.size.height)});
}

QRect QtScreens::framePixels(const Rect& frame) {
    return pixelsOf(coordinates().toToolkit(frame));
}

Coordinates QtScreens::coordinates() {
    const auto* primary = QGuiApplication::primaryScreen();
    return Coordinates(primary ? exactPlace(*primary) : QRectF());
}

Screen QtScreens::describe(const QScreen& screen) const {
    const auto number = static_cast<std::uint32_t>(identifier(screen));
    return {coordinates().fromToolkit(exactPlace(screen)), {{"NSScreenNumber", number}}};
}

DisplayID QtScreens::identifier(const QScreen& screen) const {
    const auto name = screen.name().toUtf8();
    if (const auto known = m_identifiers.find(name); known != m_identifiers.end())
        return known->second;
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        m_x.raw(), xcb_intern_atom(m_x.raw(), false, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    if (!reply)
        return DisplayID(0);
    return m_identifiers.emplace(name, DisplayID(reply->atom)).first->second;
}

} // namespace tavro
