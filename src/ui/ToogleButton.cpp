#include "ui/ToogleButton.h"

#include <QFocusEvent>
#include <QPainter>

namespace tavro {

ToogleButton::ToogleButton(const QString& label, std::function<void()> tapped, QWidget* parent)
    : QAbstractButton(parent) {
    setText(label);
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QAbstractButton::clicked, this, [tapped = std::move(tapped)] { tapped(); });
}

void ToogleButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::WindowText));
    paint(painter, QRectF(rect()).adjusted(margin, margin, -margin, -margin));
    if (!hasFocus() || !m_showsFocus)
        return;
    constexpr double half = 1, radius = 6;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2 * half));
    painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), radius, radius);
}

// Only somebody who moves it by keys wants to see where it is.
void ToogleButton::focusInEvent(QFocusEvent* event) {
    m_showsFocus = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    QAbstractButton::focusInEvent(event);
}

QSize ToogleButton::withMargin(QSizeF content) {
    return content.toSize() + QSize(2 * margin, 2 * margin);
}

void ToogleButton::paintLabel(QPainter& painter, const QRectF& area) const {
    auto font = painter.font();
    const auto width = fontMetrics().horizontalAdvance(text());
    if (width > area.width())
        font.setPixelSize(static_cast<int>(QFontInfo(font).pixelSize() * area.width() / width));
    painter.setFont(font);
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter, text());
}

} // namespace tavro
