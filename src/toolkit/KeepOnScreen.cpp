#include "toolkit/KeepOnScreen.h"

#include "toolkit/ScreenChanges.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace tavro {

namespace {

void moveOntoScreen(QWidget& window) {
    const auto place = window.frameGeometry();
    QRegion screens;
    for (const auto* screen : QGuiApplication::screens())
        screens += screen->geometry();
    const auto* screen = window.screen();
    if (!window.isVisible() || !screen || QRegion(place).subtracted(screens).isEmpty())
        return;
    const auto area = screen->availableGeometry();
    const auto within = [](int value, int least, int most) { return std::max(least, std::min(value, most)); };
    window.move(within(place.x(), area.left(), area.right() + 1 - place.width()),
                within(place.y(), area.top(), area.bottom() + 1 - place.height()));
}

} // namespace

void keepOnScreen(QWidget& window) {
    onScreenChange(window, [&window] { moveOntoScreen(window); });
}

} // namespace tavro
