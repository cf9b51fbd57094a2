#pragma once

#include "popover/InAppAlert.h"
#include "ui/controls/ToogleButton.h"

namespace tavro {

/// The banner, as wide as there is room.
class InAppAlertButton final : public ToogleButton {
public:
    InAppAlertButton(const InAppAlert& alert, std::function<void()> tapped, QWidget* parent);

    QSize sizeHint() const override;

private:
    void paint(QPainter& painter, const QRectF& area) override;
    QColor focusColor() const override;
};

} // namespace tavro
