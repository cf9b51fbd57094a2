#pragma once

#include <QProxyStyle>

namespace tavro {

/// The toolkit's style, with outlines of check boxes, fields and buttons that are seen on their window.
class OutlinedStyle : public QProxyStyle {
public:
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

} // namespace tavro
