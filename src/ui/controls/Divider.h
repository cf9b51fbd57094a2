#pragma once

#include <QWidget>

namespace tavro {

/// A hairline across the parent.
class Divider final : public QWidget {
public:
    explicit Divider(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tavro
