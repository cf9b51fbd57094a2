#pragma once

#include <QWidget>
#include <functional>

#include <memory>

class QPainter;
class QRectF;

namespace tavro {

class View;

/// Draws a view's content, asked for anew, into a rectangle.
using ViewPainter = std::function<void(const View&, QPainter&, const QRectF&)>;

/// How the toolkit shows the views of the product.
struct Views {
    /// What windows show that take no input.
    ViewPainter paint;
    /// What the others show; null for a view that has none.
    std::function<std::unique_ptr<QWidget>(const View&)> makeWidget;
};

} // namespace tavro
