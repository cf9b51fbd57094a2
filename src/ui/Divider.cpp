#include "ui/Divider.h"

#include <QFrame>

namespace tavro {

QWidget* makeDivider(QWidget* parent) {
    auto* line = new QFrame(parent);
    line->setFixedHeight(1);
    line->setFrameShape(QFrame::NoFrame);
    line->setAutoFillBackground(true);
    auto palette = line->palette();
    auto color = palette.color(QPalette::WindowText);
    color.setAlphaF(0.15f);
    palette.setColor(QPalette::Window, color);
    line->setPalette(palette);
    return line;
}

} // namespace tavro
