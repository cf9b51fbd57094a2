#pragma once

#include "platform/windows/Color.h"
#include "platform/windows/Geometry.h"

#include <array>

namespace tavro {

/// Three colours along a line, which is given in units of the shape that is filled.
struct LinearGradient {
    struct Stop {
        Color color;
        double location = 0;
    };

    std::array<Stop, 3> stops;
    Point start, end;
};

} // namespace tavro
