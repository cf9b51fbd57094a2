#pragma once

#include "ui/controls/ToogleButton.h"

namespace tavro {

class RecorderCocoa;

namespace KeyboardShortcuts {
class Name;
}

/// The place of a field that records a shortcut. The field itself would take every key, Tab too, so it is
/// this place that the keyboard's focus comes to; pressing it starts recording, and afterwards the focus is
/// back.
class Recorder final : public ToogleButton {
public:
    Recorder(const KeyboardShortcuts::Name& name, const QString& label, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

private:
    void paint(QPainter&, const QRectF&) override {}

    RecorderCocoa* m_field;
};

} // namespace tavro
