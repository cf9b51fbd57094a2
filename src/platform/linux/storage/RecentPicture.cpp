#include "platform/linux/storage/RecentPicture.h"

#include <chrono>

namespace tavro {

RecentPicture::RecentPicture() {
    constexpr std::chrono::seconds moment{2};
    m_end.setSingleShot(true);
    m_end.setInterval(moment);
    m_end.callOnTimeout([this] {
        m_version.reset();
        m_image = {};
    });
}

// The version is that of before: what changes meanwhile is decoded again.
std::optional<Image> RecentPicture::contentsOf(const std::filesystem::path& file, const Decoder& decoded) {
    const auto version = versionOf(file);
    if (version && version == m_version)
        return m_image;
    auto image = decoded(file);
    if (image) {
        m_version = version;
        m_image = *image;
        m_end.start();
    }
    return image;
}

bool RecentPicture::Version::operator==(const Version& other) const {
    return device == other.device && number == other.number && size == other.size &&
           changed.tv_sec == other.changed.tv_sec && changed.tv_nsec == other.changed.tv_nsec;
}

std::optional<RecentPicture::Version> RecentPicture::versionOf(const std::filesystem::path& file) {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0)
        return std::nullopt;
    return Version{status.st_dev, status.st_ino, status.st_size, status.st_ctim};
}

} // namespace tavro
