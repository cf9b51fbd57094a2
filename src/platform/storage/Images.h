#pragma once

#include "platform/storage/Image.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace tavro {

/// Pictures from files and from the application's own resources. Main thread only.
class Images {
public:
    enum class Detail {
        whole,
        /// No larger than the largest screen: each side is made shorter where it is longer.
        ofScreens,
    };
    using ImageHandler = std::function<void(const std::optional<Image>&)>;
    using DataHandler = std::function<void(std::optional<std::string>)>;

    virtual ~Images() = default;
    /// None when the file is missing, unreadable, not a picture, or too large to be one of a desktop. A large
    /// one takes its time.
    virtual std::optional<Image> contentsOf(const std::filesystem::path& file) const = 0;
    /// The same in the background; returns at once, and the handler runs on the main queue. A picture that
    /// somebody still has is not read again as long as its file is the same.
    virtual void load(const std::filesystem::path& file, Detail detail, ImageHandler handler) = 0;
    /// The picture as the bytes of a PNG file, made in the background; none when it cannot be encoded.
    virtual void pngRepresentation(const Image& image, DataHandler handler) = 0;
    /// None, and one line in the log, when no resource has this name.
    virtual std::optional<NamedImage> named(const std::string& name) const = 0;
};

} // namespace tavro
