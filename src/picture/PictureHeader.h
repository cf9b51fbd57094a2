#pragma once

#include <cstddef>
#include <cstdint>

namespace tavro {

/// What tavropro-picture writes before the pixels. They follow in rows from top to bottom, without a gap; a
/// pixel is a native 32-bit word 0xAARRGGBB, premultiplied. Nothing follows them.
struct PictureHeader {
    /// Larger than any desktop's wallpaper; what a file announces beyond it is not decoded.
    static constexpr std::uint32_t longestSide = 16384;
    static constexpr std::size_t mostBytes = std::size_t{512} << 20;

    std::uint32_t width = 0;
    std::uint32_t height = 0;
    /// Not 0 when a filter kept the decoder from everything but decoding.
    std::uint32_t isConfined = 0;
    std::uint32_t reserved = 0; // keeps the pixels aligned for vector instructions

    bool isWithinBounds() const {
        return width > 0 && height > 0 && width <= longestSide && height <= longestSide &&
               sizeOfPixels() <= mostBytes;
    }
    std::size_t sizeOfPixels() const { return std::size_t{4} * width * height; }
};

} // namespace tavro
