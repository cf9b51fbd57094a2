#include "toolkit/Colors.h"

#include <algorithm>
#include <cmath>

namespace tavro {

namespace {

/// As the eye weighs the linear parts of sRGB.
double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

} // namespace

QColor toolkitColor(const Color& color) {
    const auto part = [](double value) { return static_cast<float>(value); };
    return QColor::fromRgbF(part(color.red), part(color.green), part(color.blue), part(color.alpha));
}

double contrast(const QColor& one, const QColor& other) {
    constexpr double flare = 0.05;
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)}); // a copy of both
    return (lighter + flare) / (darker + flare);
}

QColor legibleOn(const QColor& background) {
    return contrast(Qt::white, background) < contrast(Qt::black, background) ? Qt::black : Qt::white;
}

} // namespace tavro
