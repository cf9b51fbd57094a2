#pragma once

#include <array>
#include <cstdint>

namespace tavro {

/// How a desktop draws its background: two colours, and on them a picture.
struct BackgroundStyle {
    enum class Scaling {
        /// As large as it is, in the middle.
        centered,
        /// As large as it is, side by side from the upper left corner.
        tiled,
        /// As large as the area, whatever becomes of its shape.
        stretched,
        /// As large as can be seen whole.
        fitted,
        /// As small as leaves nothing of the area free.
        zoomed
    };
    /// From the first colour to the second; which way.
    enum class Shading { solid, horizontal, vertical };
    /// Who makes a picture larger or smaller, and what becomes of a side that is no whole number of pixels.
    enum class Scaler {
        /// It is cut off.
        toolkit,
        /// It is rounded up.
        toolkitRoundingUp,
        /// It is cut off after reckoning with single precision, so that a column may stay free.
        gdkPixbuf,
        /// As a compositing window manager draws a texture: it is cut off, free space rounded up, tiles are
        /// put
        /// around the middle, and colours change in the middle half.
        texture,
        /// As an Image element of Qt Quick does all of it; then the area is the screen's.
        quick
    };

    Scaling scaling = Scaling::zoomed;
    Shading shading = Shading::solid;
    Scaler scaler = Scaler::toolkit;
    /// 0xRRGGBB.
    std::array<std::uint32_t, 2> colors{};

    bool operator==(const BackgroundStyle&) const = default;
};

} // namespace tavro
