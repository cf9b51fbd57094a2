#include "platform/linux/windows/WindowRole.h"

#include <QAccessibleWidget>
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

void announceWindows() {
    QAccessible::installFactory(&describe);
}

} // namespace tavro
