#include "platform/linux/storage/PictureAnswer.h"

#include <cstring>

namespace tavro {

namespace {
constexpr qsizetype sizeOfHeader = sizeof(PictureHeader);

/// Of a picture within the bounds, so that it cannot be too large for the type.
qsizetype sizeOfAnswer(const PictureHeader& header) {
    return sizeOfHeader + static_cast<qsizetype>(header.sizeOfPixels());
}
} // namespace

PictureHeader PictureAnswer::header() const {
    PictureHeader header;
    if (m_bytes.size() >= sizeOfHeader)
        std::memcpy(&header, m_bytes.constData(), sizeOfHeader);
    return header;
}

bool PictureAnswer::append(const QByteArray& bytes) {
    m_bytes += bytes;
    return m_bytes.size() < sizeOfHeader ||
           (header().isWithinBounds() && m_bytes.size() <= sizeOfAnswer(header()));
}

std::optional<Image> PictureAnswer::image() const {
    const auto picture = header();
    if (m_bytes.size() != sizeOfAnswer(picture))
        return std::nullopt;
    const auto bytes = std::make_shared<const QByteArray>(m_bytes);
    const auto* pixels = reinterpret_cast<const std::uint8_t*>(bytes->constData()) + sizeOfHeader;
    return Image{static_cast<int>(picture.width),
                 static_cast<int>(picture.height),
                 std::size_t{4} * picture.width,
                 {bytes, pixels},
                 {static_cast<double>(picture.width), static_cast<double>(picture.height)}};
}

} // namespace tavro
