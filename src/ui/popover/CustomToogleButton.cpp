#include "ui/popover/CustomToogleButton.h"

#include "popover/ContentView.h"
#include "toolkit/Colors.h"

#include <QLinearGradient>
#include <QPainter>

#include <utility>

namespace tavro {

namespace {

constexpr int milliseconds = static_cast<int>(ContentView::animationSeconds * 1000);

QEasingCurve easeOut() {
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({0, 0}, {0.58, 1}, {1, 1});
    return curve;
}

QPointF within(const QRectF& area, Point unit) {
    return {area.left() + unit.x * area.width(), area.top() + unit.y * area.height()};
}

QLinearGradient toolkitGradient(const LinearGradient& gradient, const QRectF& area) {
    QLinearGradient result(within(area, gradient.start), within(area, gradient.end));
    for (const auto& [color, location] : gradient.stops)
        result.setColorAt(location, toolkitColor(color));
    return result;
}

} // namespace

CustomToogleButton::CustomToogleButton(const QString& label, const CustomToogleStyle& style,
                                       std::function<void()> tapped, QWidget* parent)
    : ToogleButton(
          label,
          [this, tapped = std::move(tapped)] {
              m_isTapped = true;
              tapped();
          },
          parent)
    , m_style(style) {
    setCheckable(true);
    m_knob.setDuration(milliseconds);
    m_knob.setEasingCurve(easeOut());
    connect(&m_knob, &QVariantAnimation::valueChanged, this, [this] { update(); });
}

void CustomToogleButton::setIsOn(bool isOn) {
    if (isOn == isChecked())
        return;
    ToogleButton::setIsOn(isOn);
    m_knob.stop();
    m_knob.setStartValue(isOn ? 0.0 : 1.0);
    m_knob.setEndValue(isOn ? 1.0 : 0.0);
    m_knob.start();
    if (!std::exchange(m_isTapped, false))
        m_knob.setCurrentTime(milliseconds);
}

QSize CustomToogleButton::sizeHint() const {
    return withMargin({Constants::popoverContentWidth, m_style.size});
}

void CustomToogleButton::paint(QPainter& painter, const QRectF& area) {
    paintLabel(painter, mirrored({area.topLeft(), QSizeF(CustomToogleStyle::labelWidth, area.height())}));
    const auto [width, height] = m_style.track();
    if (isRightToLeft()) {
        painter.translate(this->width(), 0);
        painter.scale(-1, 1);
    }
    paintSwitch(painter, {area.right() - width, area.center().y() - height / 2, width, height});
}

void CustomToogleButton::paintSwitch(QPainter& painter, const QRectF& track) const {
    const double knob = m_knob.state() == QAbstractAnimation::Running ? m_knob.currentValue().toDouble()
                        : isChecked()                                 ? 1
                                                                      : 0;
    const double radius = track.height() / 2;
    painter.setPen(Qt::NoPen);
    const auto fillTrack = [&](const QBrush& brush, double opacity) {
        if (opacity == 0)
            return; // the toolkit would start threads to draw nothing
        painter.setBrush(brush);
        painter.setOpacity(opacity);
        painter.drawRoundedRect(track, radius, radius);
    };
    fillTrack(toolkitColor(CustomToogleStyle::offColor), 1 - knob);
    fillTrack(toolkitGradient(m_style.linearColors, track), knob);
    painter.setOpacity(1);
    // Or a light gradient would not be seen on a light window, nor the knob on it.
    constexpr double half = 0.5;
    painter.setPen(QColor(0, 0, 0, 128));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(track.adjusted(half, half, -half, -half), radius - half, radius - half);
    painter.setBrush(Qt::white);
    const auto size = m_style.size;
    const QRectF place(track.left() + knob * (track.width() - size), track.center().y() - size / 2, size,
                       size);
    painter.drawEllipse(place.adjusted(half, half, -half, -half));
}

} // namespace tavro
