#include "picture/Composition.h"

#include "picture/PictureHeader.h"

#include <array>

namespace tavro {

namespace {

using Scaling = BackgroundStyle::Scaling;
using Shading = BackgroundStyle::Shading;
using Scaler = BackgroundStyle::Scaler;

QSize scaled(Scaling scaling, QSize picture, QSize area) {
    switch (scaling) {
    case Scaling::centered:
    case Scaling::tiled:
        return picture;
    case Scaling::stretched:
        return area;
    case Scaling::fitted:
        return picture.scaled(area, Qt::KeepAspectRatio).expandedTo({1, 1});
    case Scaling::zoomed:
        return picture.scaled(area, Qt::KeepAspectRatioByExpanding);
    }
    return {};
}

} // namespace

bool isWithinBounds(QSize size) {
    return !size.isEmpty() && PictureHeader{static_cast<std::uint32_t>(size.width()),
                                            static_cast<std::uint32_t>(size.height())}
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

QRect Composition::placeOf(QSize picture) const {
    const auto size = scaled(style.scaling, picture, area.size());
    const auto free = area.size() - size;
    const bool isInTheCorner = style.scaling == Scaling::tiled;
    // What is cut off is rounded like what is left free: towards nothing.
    const auto corner = isInTheCorner ? QPoint() : QPoint(free.width() / 2, free.height() / 2);
    return {area.topLeft() + corner, size};
}

} // namespace tavro
