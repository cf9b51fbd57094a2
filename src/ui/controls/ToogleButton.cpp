#include "ui/controls/ToogleButton.h"

#include "ui/controls/PushButton.h"
#include "ui/painting/TextPainting.h"

#include <QFocusEvent>
#include <QPainter>

namespace tavro {

ToogleButton::ToogleButton(const QString& label, std::function<void()> tapped, QWidget* parent)
    : QAbstractButton(parent) {
    setText(label);
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QAbstractButton::clicked, this, [tapped = std::move(tapped)] { tapped(); });
    connect(this, &QAbstractButton::toggled, this, [this] { keepState(); });
}

void ToogleButton::setIsOn(bool isOn) {
    m_isOn = isOn;
    setChecked(isOn);
}

// Assistive technology toggles the button itself instead of clicking it.
void ToogleButton::keepState() {
    if (isChecked() == m_isOn)
        return;
    setChecked(m_isOn);
    click();
}

void ToogleButton::keyPressEvent(QKeyEvent* event) {
    if (!pressWithReturn(*this, *event))
        QAbstractButton::keyPressEvent(event);
}

void ToogleButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.setLayoutDirection(layoutDirection()); // which painters of images do not know
    paint(painter, QRectF(rect()).adjusted(margin, margin, -margin, -margin));
    if (!hasFocus() || !m_showsFocus)
        return;
    constexpr double half = 1, radius = 6;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(focusColor(), 2 * half));
    painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), radius, radius);
}

// Only somebody who moves it by keys wants to see where it is.
void ToogleButton::focusInEvent(QFocusEvent* event) {
    m_showsFocus |= event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    QAbstractButton::focusInEvent(event);
}

// It comes back from another window, and from what the button itself gave it to.
void ToogleButton::focusOutEvent(QFocusEvent* event) {
    const auto reason = event->reason();
    m_showsFocus &= reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
                    reason == Qt::OtherFocusReason;
    QAbstractButton::focusOutEvent(event);
}

QColor ToogleButton::focusColor() const {
    return palette().color(QPalette::Highlight);
}

QSize ToogleButton::withMargin(QSizeF content) {
    return content.toSize() + QSize(2 * margin, 2 * margin);
}

QRectF ToogleButton::mirrored(const QRectF& place) const {
    return isRightToLeft() ? place.translated(width() - place.left() - place.right(), 0) : place;
}

void ToogleButton::paintLabel(QPainter& painter, const QRectF& area) const {
    paintFittedText(painter, area, Qt::AlignLeft | Qt::AlignVCenter, text());
}

} // namespace tavro
