#pragma once

#include "ui/controls/ToogleButton.h"

namespace tavro {

class RecorderCocoa;

namespace KeyboardShortcuts {
class Name;
}

/// The place of a field that records a shortcut. The field itself would take every key, Tab too, so it is
/// this place that the keyboard's focus comes to; pressing a key starts recording. The mouse takes the field.
class Recorder final : public ToogleButton {
public:
    Recorder(const KeyboardShortcuts::Name& name, const QString& label, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

private:
    bool hitButton(const QPoint&) const override { return false; }
    void paint(QPainter&, const QRectF&) override {}
    void nameKeys();

    RecorderCocoa* m_field;
};

} // namespace tavro
