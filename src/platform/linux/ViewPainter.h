#pragma once

#include <functional>

class QPainter;
class QRectF;

namespace tavro {

class View;

/// Draws a view's content, asked for anew, into a rectangle.
using ViewPainter = std::function<void(const View&, QPainter&, const QRectF&)>;

} // namespace tavro
