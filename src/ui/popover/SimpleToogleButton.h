#pragma once

#include "ui/controls/ToogleButton.h"

namespace tavro {

/// A row with a check mark while it is on.
class SimpleToogleButton final : public ToogleButton {
public:
    SimpleToogleButton(const QString& label, std::function<void()> tapped, QWidget* parent);

    QSize sizeHint() const override;

private:
    void paint(QPainter& painter, const QRectF& area) override;
};

} // namespace tavro
