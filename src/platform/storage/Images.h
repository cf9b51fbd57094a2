#pragma once

#include "platform/storage/Image.h"

#include <filesystem>
#include <optional>
#include <string>

namespace tavro {

/// Pictures from files and from the application's own resources.
class Images {
public:
    virtual ~Images() = default;
    /// None when the file is missing, unreadable, not a picture, or too large to be one of a desktop.
    virtual std::optional<Image> contentsOf(const std::filesystem::path& file) const = 0;
    /// The picture as the bytes of a PNG file; none when it cannot be encoded.
    virtual std::optional<std::string> pngRepresentation(const Image& image) const = 0;
    /// None, and one line in the log, when no resource has this name.
    virtual std::optional<NamedImage> named(const std::string& name) const = 0;
};

} // namespace tavro
