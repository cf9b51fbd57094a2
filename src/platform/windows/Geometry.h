#pragma once

namespace tavro {

/// Lengths are points, in double precision. Screen coordinates are global with the origin at the lower left
/// of the main screen, unless an interface says otherwise.
struct Point {
    double x = 0;
    double y = 0;
    bool operator==(const Point&) const = default;
};

struct Size {
    double width = 0;
    double height = 0;
    bool operator==(const Size&) const = default;
};

struct Rect {
    Point origin;
    Size size;
    bool operator==(const Rect&) const = default;
};

} // namespace tavro
