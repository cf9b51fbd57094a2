#pragma once

#include "platform/linux/storage/RecentPicture.h"
#include "platform/storage/Images.h"

class QByteArray;

namespace tavro {

class Log;

/// Pictures by the toolkit's readers, and the icons compiled into the program.
class QtImages final : public Images {
public:
    /// HEIC files are turned into PNG by that program, which is started for each.
    QtImages(std::filesystem::path heifProgram, Log& log);

    std::optional<Image> contentsOf(const std::filesystem::path& file) const override;
    std::optional<std::string> pngRepresentation(const Image& image) const override;
    std::optional<NamedImage> named(const std::string& name) const override;

private:
    std::optional<Image> decoded(const std::filesystem::path& file) const;
    QByteArray heifAsPng(const std::filesystem::path& file) const;

    const std::filesystem::path m_heifProgram;
    Log& m_log;
    mutable RecentPicture m_recent;
};

} // namespace tavro
