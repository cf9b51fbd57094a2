#include "picture/Composition.h"

#include "picture/PictureHeader.h"
#include "picture/QuickImage.h"

#include <QtMath>

#include <algorithm>
#include <array>

namespace tavro {

namespace {

using Scaling = BackgroundStyle::Scaling;
using Shading = BackgroundStyle::Shading;
using Scaler = BackgroundStyle::Scaler;

/// Of the same shape.
QSize shaped(const BackgroundStyle& style, QSize picture, QSize area) {
    const bool isFitted = style.scaling == Scaling::fitted;
    if (style.scaler == Scaler::toolkit || style.scaler == Scaler::texture)
        return picture.scaled(area, isFitted ? Qt::KeepAspectRatio : Qt::KeepAspectRatioByExpanding);
    if (style.scaler == Scaler::toolkitRoundingUp) {
        const auto exact =
            QSizeF(picture).scaled(area, isFitted ? Qt::KeepAspectRatio : Qt::KeepAspectRatioByExpanding);
        return {qCeil(exact.width()), qCeil(exact.height())};
    }
    const auto ofWidth = static_cast<float>(area.width()) / static_cast<float>(picture.width()),
               ofHeight = static_cast<float>(area.height()) / static_cast<float>(picture.height());
    const double factor = isFitted ? std::min(ofWidth, ofHeight) : std::max(ofWidth, ofHeight);
    return {static_cast<int>(picture.width() * factor), static_cast<int>(picture.height() * factor)};
}

} // namespace

bool isWithinBounds(QSize size) {
    return !size.isEmpty() &&
           PictureHeader{static_cast<std::uint32_t>(size.width()), static_cast<std::uint32_t>(size.height())}
               .isWithinBounds();
}

QStringList Composition::arguments() const {
    QStringList arguments;
    for (const auto number :
         {screen.width(), screen.height(), area.x(), area.y(), area.width(), area.height(),
          static_cast<int>(style.scaling), static_cast<int>(style.shading), static_cast<int>(style.scaler),
          static_cast<int>(style.colors[0]), static_cast<int>(style.colors[1])})
        arguments += QString::number(number);
    return arguments;
}

std::optional<Composition> Composition::parse(const QStringList& arguments) {
    std::array<int, 11> numbers{};
    bool areNumbers = arguments.size() == static_cast<qsizetype>(numbers.size());
    for (std::size_t i = 0; areNumbers && i < numbers.size(); ++i)
        numbers[i] = arguments[static_cast<qsizetype>(i)].toInt(&areNumbers);
    const auto& [width, height, x, y, areaWidth, areaHeight, scaling, shading, scaler, first, second] =
        numbers;
    const Composition composition{{static_cast<Scaling>(scaling),
                                   static_cast<Shading>(shading),
                                   static_cast<Scaler>(scaler),
                                   {static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(second)}},
                                  {width, height},
                                  {x, y, areaWidth, areaHeight}};
    const bool isOne =
        areNumbers && isWithinBounds(composition.screen) && isWithinBounds(composition.area.size());
    return isOne ? std::optional(composition) : std::nullopt;
}

QSize Composition::loadedSize(QSize own, bool isDrawing) const {
    const bool isQuick = style.scaler == BackgroundStyle::Scaler::quick;
    return isQuick ? quickLoadedSize(style.scaling, own, screen, isDrawing) : own;
}

QRect Composition::placeOf(QSize picture) const {
    if (style.scaling == Scaling::tiled)
        return {area.topLeft(), picture};
    if (style.scaling == Scaling::stretched)
        return area;
    const bool isTexture = style.scaler == Scaler::texture;
    const auto size =
        style.scaling == Scaling::centered ? picture : shaped(style, picture, area.size()).expandedTo({1, 1});
    const auto half = [&](int free) { return isTexture ? qCeil(free / 2.0) : free / 2; }; // or cut off
    return {area.topLeft() + QPoint(half(area.width() - size.width()), half(area.height() - size.height())),
            size};
}

} // namespace tavro
