#pragma once

#include "platform/linux/storage/RecentPicture.h"
#include "platform/storage/Images.h"

namespace tavro {

class Log;
class PictureAnswer;

/// Pictures that a program of its own decodes, started for each, and the icons compiled into this one.
class QtImages final : public Images {
public:
    QtImages(std::filesystem::path decoder, Log& log);

    std::optional<Image> contentsOf(const std::filesystem::path& file) const override;
    std::optional<std::string> pngRepresentation(const Image& image) const override;
    std::optional<NamedImage> named(const std::string& name) const override;

private:
    std::optional<Image> decoded(const std::filesystem::path& path) const;
    /// One line for all pictures.
    void tellConfinement(const PictureAnswer& answer) const;

    const std::filesystem::path m_decoder;
    Log& m_log;
    mutable bool m_hasToldConfinement = false;
    mutable RecentPicture m_recent;
};

} // namespace tavro
