#pragma once

#include <QImage>

#include <functional>
#include <string_view>

namespace tavro {

/// Loads what drawing needs.
void loadSvgDecoder();
/// Whether the file says that it is an SVG drawing.
bool isSvg(std::string_view bytes);
/// A null image when there is no whole drawing, or the size that is wanted by its own has longer sides
/// than that. Texts,
/// and what is not in the file itself, are left out.
QImage drawSvg(std::string_view bytes, const std::function<QSize(QSize)>& sizeByOwn, int longestSide);

} // namespace tavro
