#pragma once

#include "platform/windows/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace tavro {

/// A picture that the window server keeps, of which only its machine knows more.
class ServerImage {
public:
    virtual ~ServerImage() = default;
};

/// A picture in memory, or one that the window server keeps. Copies share it.
struct Image {
    int pixelWidth = 0;
    int pixelHeight = 0;
    std::size_t bytesPerRow = 0;
    /// Rows from top to bottom; a pixel is a native 32-bit word 0xAARRGGBB, premultiplied. None where the
    /// server keeps the picture.
    std::shared_ptr<const std::uint8_t> pixels;
    /// The size in points at which it is drawn.
    Size size;
    std::shared_ptr<const ServerImage> onServer = {};
};

/// A picture that ships with the application, known to be there; drawn crisp at any size.
struct NamedImage {
    std::string name;
    bool operator==(const NamedImage&) const = default;
};

} // namespace tavro
