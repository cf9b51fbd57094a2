#include "toolkit/OutlinedStyle.h"

#include <QPainter>
#include <QStyleOption>

namespace tavro {

void OutlinedStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element != PE_IndicatorCheckBox && element != PE_FrameLineEdit && element != PE_PanelButtonCommand)
        return;
    constexpr double half = 0.5, radius = 2;
    auto color = option->palette.color(QPalette::WindowText);
    color.setAlphaF(half);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(color);
    painter->drawRoundedRect(QRectF(option->rect).adjusted(half, half, -half, -half), radius, radius);
    painter->restore();
}

} // namespace tavro
