#pragma once

#include <QImage>

#include <functional>
#include <string_view>

namespace tavro {

/// The size at which a drawing is wanted, by its own.
using SizeOfDrawing = std::function<QSize(QSize)>;

/// Loads what drawing needs.
void loadSvgDecoder();
/// Whether the file says that it is an SVG drawing.
bool isSvg(std::string_view bytes);
/// A null image when there is no whole drawing, or it would have longer sides than that. Texts,
/// and what is not in the file itself, are left out.
QImage drawSvg(std::string_view bytes, const SizeOfDrawing& wanted, int longestSide);

} // namespace tavro
