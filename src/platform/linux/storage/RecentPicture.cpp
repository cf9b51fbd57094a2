#include "platform/linux/storage/RecentPicture.h"

#include <algorithm>
#include <chrono>

namespace tavro {

RecentPicture::RecentPicture() {
    constexpr std::chrono::seconds moment{2};
    m_end.setSingleShot(true);
    m_end.setInterval(moment);
    m_end.callOnTimeout([this] { m_last = {}; });
}

std::optional<Image> RecentPicture::find(const Version& version) const {
    const auto known = std::ranges::find(m_known, version, &Known::version);
    auto pixels = known == m_known.end() ? nullptr : known->pixels.lock();
    if (!pixels)
        return std::nullopt;
    auto image = known->image;
    image.pixels = std::move(pixels);
    return image;
}

void RecentPicture::keep(const Version& version, const Image& image) {
    std::erase_if(m_known,
                  [&](const auto& known) { return known.pixels.expired() || known.version == version; });
    m_known.push_back({version, image, image.pixels});
    m_known.back().image.pixels.reset();
    m_last = image;
    m_end.start();
}

bool RecentPicture::Version::operator==(const Version& other) const {
    return device == other.device && number == other.number && size == other.size &&
           changed.tv_sec == other.changed.tv_sec && changed.tv_nsec == other.changed.tv_nsec &&
           atMost == other.atMost;
}

std::optional<RecentPicture::Version> RecentPicture::versionOf(const std::filesystem::path& file,
                                                               QSize atMost) {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0)
        return std::nullopt;
    return Version{status.st_dev, status.st_ino, status.st_size, status.st_ctim, atMost};
}

} // namespace tavro
