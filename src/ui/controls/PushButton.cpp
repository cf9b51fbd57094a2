#include "ui/controls/PushButton.h"

#include <QKeyEvent>

namespace tavro {

bool pressWithReturn(QAbstractButton& button, const QKeyEvent& event) {
    const bool isReturn = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (isReturn && !event.isAutoRepeat())
        button.click();
    return isReturn;
}

void PushButton::keyPressEvent(QKeyEvent* event) {
    if (!pressWithReturn(*this, *event))
        QPushButton::keyPressEvent(event);
}

} // namespace tavro
