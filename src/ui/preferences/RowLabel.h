#pragma once

#include <QLabel>

namespace tavro {

/// The label in front of a control, as wide as its column; it breaks at words where it is longer, and gives
/// way to the control where that is wide.
class RowLabel final : public QLabel {
public:
    RowLabel(const QString& text, int columnWidth, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return false; }

private:
    QSize broken() const;

    const int m_columnWidth;
};

} // namespace tavro
