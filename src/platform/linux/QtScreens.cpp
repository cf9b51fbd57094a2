#include "platform/linux/QtScreens.h"

#include "platform/linux/XConnection.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <cmath>

namespace tavro {

namespace {

/// The corner of the first screen that display coordinates start from.
QPoint displayOrigin() {
    const auto* primary = QGuiApplication::primaryScreen();
    return primary ? primary->geometry().topLeft() : QPoint();
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
    const auto* window = QGuiApplication::focusWindow();
    const auto* screen = window ? window->screen() : QGuiApplication::primaryScreen();
    if (!screen || isPlaceholder(*screen))
        return std::nullopt;
    return describe(*screen);
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
        const auto bounds = screen->geometry().translated(-displayOrigin());
        return {{double(bounds.x()), double(bounds.y())}, {double(bounds.width()), double(bounds.height())}};
    }
    return {};
}

std::string QtScreens::connector(const Screen& screen) const {
    for (const auto* candidate : QGuiApplication::screens())
        if (describe(*candidate) == screen)
            return candidate->name().toStdString();
    return {};
}

// The toolkit scales a screen's size and leaves its corner where the server has it.
QRect QtScreens::rootPixels(const Rect& area) {
    const auto corner = QPointF(area.origin.x, area.origin.y) + displayOrigin();
    const auto* screen = QGuiApplication::screenAt(corner.toPoint());
    if (!screen)
        return {};
    const auto scale = screen->devicePixelRatio();
    const QPointF screenCorner = screen->geometry().topLeft();
    return {(screenCorner + (corner - screenCorner) * scale).toPoint(),
            (QSizeF(area.size.width, area.size.height) * scale).toSize()};
}

void QtScreens::onChange(QObject& context, const std::function<void()>& handler) {
    const auto watch = [&context, handler](QScreen* screen) {
        QObject::connect(screen, &QScreen::geometryChanged, &context, handler, Qt::QueuedConnection);
    };
    for (auto* screen : QGuiApplication::screens())
        watch(screen);
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &context, watch);
    for (const auto change : {&QGuiApplication::screenAdded, &QGuiApplication::screenRemoved})
        QObject::connect(qGuiApp, change, &context, handler, Qt::QueuedConnection);
}

Rect QtScreens::fromToolkit(const QRect& rect) {
    const auto* primary = QGuiApplication::primaryScreen();
    const double bottom = primary ? primary->geometry().top() + primary->geometry().height() : 0;
    return {{double(rect.x() - displayOrigin().x()), bottom - (rect.y() + rect.height())},
            {double(rect.width()), double(rect.height())}};
}

QRect QtScreens::toToolkit(const Rect& rect) {
    const auto* primary = QGuiApplication::primaryScreen();
    const double bottom = primary ? primary->geometry().top() + primary->geometry().height() : 0;
    return QRectF(rect.origin.x + displayOrigin().x(), bottom - (rect.origin.y + rect.size.height),
                  rect.size.width, rect.size.height)
        .toRect();
}

Screen QtScreens::describe(const QScreen& screen) const {
    const auto number = static_cast<std::uint32_t>(identifier(screen));
    return {fromToolkit(screen.geometry()), {{"NSScreenNumber", number}}};
}

DisplayID QtScreens::identifier(const QScreen& screen) const {
    const auto name = screen.name().toUtf8();
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        m_x.raw(), xcb_intern_atom(m_x.raw(), false, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    m_x.deliverQueuedEvents();
    return DisplayID(reply ? reply->atom : 0);
}

} // namespace tavro
