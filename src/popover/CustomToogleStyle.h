#pragma once

#include "popover/LinearGradient.h"

namespace tavro {

/// How the big switch looks: a label, and at the other end a knob on a track whose ends are round. On, the
/// track is filled with the gradient and the knob is at its right end; off, it is gray and the knob is at its
/// left end. In points.
struct CustomToogleStyle {
    static constexpr double labelWidth = 200;
    static constexpr Color offColor{0.5, 0.5, 0.5, 1};

    double size = 0; // the knob's diameter
    LinearGradient linearColors;

    constexpr Size track() const { return {size + 28, size - 3}; }
};

} // namespace tavro
