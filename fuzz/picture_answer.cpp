// What the program that decodes pictures answers, in pieces: a picture file may have taken it over.
#include "platform/linux/storage/PictureAnswer.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <numeric>

namespace {

/// Looks at every pixel, as drawing does.
void draw(const tavro::Image& image) {
    const auto end = static_cast<std::size_t>(image.pixelHeight) * image.bytesPerRow;
    const volatile auto sum = std::accumulate(image.pixels.get(), image.pixels.get() + end, 0U);
    (void)sum;
    if (image.pixelWidth <= 0 || image.pixelHeight <= 0 ||
        image.bytesPerRow < 4 * static_cast<std::size_t>(image.pixelWidth))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    constexpr qsizetype pieceSize = 13; // a header does not come in one piece
    const auto all =
        QByteArray::fromRawData(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size));
    tavro::PictureAnswer answer;
    for (qsizetype i = 0; i < all.size(); i += pieceSize)
        if (!answer.append(all.mid(i, pieceSize)))
            return 0;
    if (const auto image = answer.image())
        draw(*image);
    return 0;
}
