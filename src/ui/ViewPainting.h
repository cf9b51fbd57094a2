#pragma once

class QPainter;
class QRectF;

namespace tavro {

class View;

/// Draws a view of the product that takes no input into a rectangle; nothing for one that it does not know.
void paintView(const View& view, QPainter& painter, const QRectF& area);

} // namespace tavro
