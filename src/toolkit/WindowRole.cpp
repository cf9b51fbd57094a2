#include "toolkit/WindowRole.h"

#include <QAccessibleWidget>
#include <QGuiApplication>
#include <QWidget>

namespace tavro {

namespace {

QAccessibleInterface* describe(const QString& className, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    return widget && widget->isWindow() && className == "QWidget"
               ? new QAccessibleWidget(widget, QAccessible::Window)
               : nullptr;
}

} // namespace

// A factory that is installed already is not installed again.
void announceAsWindow(QWidget& window) {
    QAccessible::installFactory(&describe);
    window.setAccessibleName(QGuiApplication::applicationDisplayName());
}

} // namespace tavro
