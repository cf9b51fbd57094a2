#pragma once

#include "platform/storage/Image.h"
#include "platform/windows/Color.h"

#include <optional>
#include <string>

namespace tavro {

/// What the microphone's indicator shows: an image and, below it, a text in the body font, both centred in
/// the window's area less the padding. Behind them the whole area is a rounded rectangle of the background
/// colour; outside of it the window is transparent.
struct AlertContent {
    /// Stretched to a square.
    std::optional<NamedImage> image;
    std::string text;
    bool operator==(const AlertContent&) const = default;

    static constexpr double imageSide = 92;
    static constexpr double spacing = 8; // between image and text
    static constexpr double padding = 10;
    static constexpr double cornerRadius = 20;
    static constexpr Color textColor{1, 1, 1, 1};
    static constexpr Color backgroundColor{0, 0, 0, 0.6};
};

} // namespace tavro
