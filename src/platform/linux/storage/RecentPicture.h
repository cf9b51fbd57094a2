#pragma once

#include "platform/storage/Image.h"

#include <QSize>
#include <QTimer>

#include <filesystem>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <vector>

namespace tavro {

/// Pictures that have been decoded, found again as long as anybody has them; the last one is also kept for a
/// moment, since the covers of several screens and the preview ask for the same one after the other. Main
/// thread only.
class RecentPicture {
public:
    /// Which picture it is: that of a file which has not changed since, within that size.
    struct Version {
        dev_t device = 0;
        ino_t number = 0;
        off_t size = 0;
        timespec changed{};
        QSize atMost;
        bool operator==(const Version& other) const;
    };

    RecentPicture();

    /// None where there is no such file.
    static std::optional<Version> versionOf(const std::filesystem::path& file, QSize atMost);
    std::optional<Image> find(const Version& version) const;
    void keep(const Version& version, const Image& image);

private:
    struct Known {
        Version version;
        Image image; // without its pixels
        std::weak_ptr<const std::uint8_t> pixels;
    };

    std::vector<Known> m_known;
    Image m_last;
    QTimer m_end;
};

} // namespace tavro
