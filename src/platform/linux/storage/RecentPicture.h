#pragma once

#include "platform/storage/Image.h"

#include <QTimer>

#include <filesystem>
#include <functional>
#include <optional>
#include <sys/stat.h>

namespace tavro {

/// The picture that was decoded last, kept for a moment: a chosen one is stored, previewed and then shown on
/// every screen. Main thread only.
class RecentPicture {
public:
    RecentPicture();

    using Decoder = std::function<std::optional<Image>(const std::filesystem::path& file)>;
    /// Decodes the file, unless it was the last one and has not changed since.
    std::optional<Image> contentsOf(const std::filesystem::path& file, const Decoder& decoded);

private:
    struct Version {
        dev_t device = 0;
        ino_t number = 0;
        off_t size = 0;
        timespec changed{};
        bool operator==(const Version& other) const;
    };
    static std::optional<Version> versionOf(const std::filesystem::path& file);

    std::optional<Version> m_version;
    Image m_image;
    QTimer m_end;
};

} // namespace tavro
