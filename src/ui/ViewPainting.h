#pragma once

#include <QWidget>

#include <memory>

class QPainter;
class QRectF;

namespace tavro {

class View;

/// Draws a view of the product that takes no input into a rectangle; nothing for one that it does not know.
void paintView(const View& view, QPainter& painter, const QRectF& area);

/// A widget that shows a view of the product which takes input, and hands its taps on; null for one that it
/// does not know.
std::unique_ptr<QWidget> makeWidget(const View& view);

} // namespace tavro
