#include "ui/controls/Divider.h"

#include <QPainter>

namespace tavro {

Divider::Divider(QWidget* parent)
    : QWidget(parent) {
    setFixedHeight(1);
}

void Divider::paintEvent(QPaintEvent*) {
    auto color = palette().color(QPalette::WindowText);
    color.setAlphaF(0.15f);
    QPainter(this).fillRect(rect(), color);
}

} // namespace tavro
