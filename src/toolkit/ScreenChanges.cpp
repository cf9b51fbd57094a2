#include "toolkit/ScreenChanges.h"

#include <QGuiApplication>
#include <QScreen>

namespace tavro {

void onScreenChange(QObject& context, const std::function<void()>& handler) {
    const auto watch = [&context, handler](QScreen* screen) {
        QObject::connect(screen, &QScreen::geometryChanged, &context, handler, Qt::QueuedConnection);
    };
    for (auto* screen : QGuiApplication::screens())
        watch(screen);
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &context, watch);
    for (const auto change : {&QGuiApplication::screenAdded, &QGuiApplication::screenRemoved})
        QObject::connect(qGuiApp, change, &context, handler, Qt::QueuedConnection);
}

} // namespace tavro
