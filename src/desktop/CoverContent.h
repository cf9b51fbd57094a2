#pragma once

#include "platform/storage/Image.h"

#include <string>
#include <variant>

namespace tavro {

/// Fills the whole cover; its aspect ratio is not kept.
struct StretchedImage {
    Image image;
};

/// Drawn at its own size in points, centred.
struct FixedImage {
    Image image;
};

/// Centred, in the system's font.
struct CenteredText {
    std::string text;
};

/// What a cover shows.
using CoverContent = std::variant<StretchedImage, FixedImage, CenteredText>;

} // namespace tavro
