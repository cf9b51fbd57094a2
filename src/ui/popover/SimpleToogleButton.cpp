#include "ui/popover/SimpleToogleButton.h"

#include "popover/SimpleToogleStyle.h"
#include "toolkit/Icons.h"

#include <QPainter>

namespace tavro {

SimpleToogleButton::SimpleToogleButton(const QString& label, std::function<void()> tapped, QWidget* parent)
    : ToogleButton(label, std::move(tapped), parent) {
    setCheckable(true);
}

QSize SimpleToogleButton::sizeHint() const {
    return withMargin(QSizeF(Constants::popoverContentWidth, fontMetrics().height()));
}

void SimpleToogleButton::paint(QPainter& painter, const QRectF& area) {
    const double left = area.center().x() - SimpleToogleStyle::width / 2;
    paintLabel(painter, mirrored({left, area.top(), SimpleToogleStyle::labelWidth, area.height()}));
    if (!isChecked())
        return;
    const auto [width, height] = SimpleToogleStyle::checkSize;
    const auto place =
        mirrored({left + SimpleToogleStyle::width - width, area.center().y() - height / 2, width, height});
    painter.drawPixmap(place.toRect(), tinted(NamedImage{SimpleToogleStyle::checkName}, place.toRect().size(),
                                              palette().color(QPalette::WindowText), devicePixelRatio()));
}

} // namespace tavro
