#include "ui/preferences/RowLabel.h"

#include <QFontMetrics>

namespace tavro {

RowLabel::RowLabel(const QString& text, int columnWidth, QWidget* parent)
    : QLabel(text, parent)
    , m_columnWidth(columnWidth) {
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
}

QSize RowLabel::sizeHint() const {
    return broken().expandedTo({m_columnWidth, 0});
}

QSize RowLabel::minimumSizeHint() const {
    return broken();
}

/// At the column's width; wider where a single word is.
QSize RowLabel::broken() const {
    int widest = 0;
    for (const auto& word : text().split(' '))
        widest = qMax(widest, fontMetrics().horizontalAdvance(word));
    const QRect column(0, 0, qMax(widest, m_columnWidth), QWIDGETSIZE_MAX);
    return fontMetrics().boundingRect(column, Qt::AlignLeft | Qt::TextWordWrap, text()).size() + QSize(1, 0);
}

} // namespace tavro
