#pragma once

namespace tavro {

/// Components between 0 and 1, not premultiplied.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
    bool operator==(const Color&) const = default;

    static Color white(double white, double alpha) { return {white, white, white, alpha}; }
};

} // namespace tavro
