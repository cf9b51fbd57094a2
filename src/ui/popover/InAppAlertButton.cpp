#include "ui/popover/InAppAlertButton.h"

#include "toolkit/Colors.h"
#include "toolkit/Translation.h"

#include <QPainter>

namespace tavro {

namespace {
constexpr int aside = static_cast<int>(InAppAlert::horizontalPadding);
constexpr int above = static_cast<int>(InAppAlert::verticalPadding);
} // namespace

InAppAlertButton::InAppAlertButton(const InAppAlert& alert, std::function<void()> tapped, QWidget* parent)
    : ToogleButton(translated(alert.message), std::move(tapped), parent) {}

QSize InAppAlertButton::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text()) + 2 * aside, fontMetrics().height() + 2 * above};
}

void InAppAlertButton::paint(QPainter& painter, const QRectF&) {
    painter.fillRect(rect(), toolkitColor(InAppAlert::backgroundColor));
    painter.setPen(focusColor());
    paintLabel(painter, QRectF(rect()).adjusted(aside, above, -aside, -above));
}

QColor InAppAlertButton::focusColor() const {
    return legibleOn(toolkitColor(InAppAlert::backgroundColor));
}

} // namespace tavro
