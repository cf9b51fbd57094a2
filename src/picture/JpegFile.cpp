#include "picture/JpegFile.h"

#include <algorithm>

namespace tavro {

namespace {

/// Where the next marker begins that is neither a stuffed byte nor a restart within coded data.
std::size_t endOfCodedData(std::string_view bytes, std::size_t position) {
    while ((position = bytes.find('\xff', position)) != bytes.npos && position + 1 < bytes.size()) {
        const auto code = static_cast<unsigned char>(bytes[position + 1]);
        if (code != 0x00 && code != 0xff && (code < 0xd0 || code > 0xd7))
            return position;
        ++position;
    }
    return bytes.npos;
}

} // namespace

// Walks from marker segment to marker segment; the thumbnails in them, with ends of their own, are passed
// over.
bool isCutOffJpeg(std::string_view bytes) {
    constexpr unsigned char endOfImage = 0xd9, startOfScan = 0xda;
    const auto at = [&](std::size_t position) { return static_cast<unsigned char>(bytes[position]); };
    std::size_t position = 2; // after the start of the image
    while (position < bytes.size() && bytes.size() - position >= 4 && at(position) == 0xff) {
        const auto code = at(position + 1);
        if (code == endOfImage)
            return false;
        if (code == 0xff) { // padding
            ++position;
            continue;
        }
        position += 2 + std::size_t{at(position + 2)} * 256 + at(position + 3);
        if (code == startOfScan)
            position = endOfCodedData(bytes, position);
    }
    return bytes.substr(std::min(position, bytes.size())) != "\xff\xd9";
}

} // namespace tavro
