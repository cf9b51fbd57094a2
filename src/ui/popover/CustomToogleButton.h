#pragma once

#include "popover/CustomToogleStyle.h"
#include "ui/controls/ToogleButton.h"

#include <QVariantAnimation>

namespace tavro {

/// The big switch. A tap moves its knob with the animation; other changes show at once.
class CustomToogleButton final : public ToogleButton {
public:
    CustomToogleButton(const QString& label, const CustomToogleStyle& style, std::function<void()> tapped,
                       QWidget* parent);

    /// As the base class does, and moves the knob.
    void setIsOn(bool isOn);
    QSize sizeHint() const override;

private:
    void paint(QPainter& painter, const QRectF& area) override;
    void paintSwitch(QPainter& painter, const QRectF& area) const;

    const CustomToogleStyle& m_style;
    QVariantAnimation m_knob{this}; // 0 at the left end, 1 at the right one
    bool m_isTapped = false;
};

} // namespace tavro
