#pragma once

#include <QWidget>
#include <functional>

#include <memory>

class QPainter;
class QRectF;

namespace tavro {

class ServerImage;
class View;

/// What a view that takes no input shows now: a picture that the window server keeps, or what is to be drawn
/// into a rectangle.
struct ViewContent {
    std::shared_ptr<const ServerImage> onServer;
    std::function<void(QPainter&, const QRectF&)> draw;
};

/// How the toolkit shows the views of the product.
struct Views {
    /// What windows show that take no input; asked anew each time.
    std::function<ViewContent(const View&)> content;
    /// What the others show; null for a view that has none.
    std::function<std::unique_ptr<QWidget>(const View&)> makeWidget;
};

} // namespace tavro
