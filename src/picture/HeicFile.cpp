#include "picture/HeicFile.h"

#include "picture/Release.h"

#include <libheif/heif.h>

#include <algorithm>
#include <memory>

namespace tavro {

namespace {

using Context = std::unique_ptr<heif_context, Release<&heif_context_free>>;
using Handle = std::unique_ptr<heif_image_handle, Release<&heif_image_handle_release>>;
using Options = std::unique_ptr<heif_decoding_options, Release<&heif_decoding_options_free>>;
using Picture = std::unique_ptr<heif_image, Release<&heif_image_release>>;

bool failed(const heif_error& error) {
    return error.code != heif_error_Ok;
}

Handle primaryImage(heif_context* context, std::string_view bytes, int longestSide) {
    heif_image_handle* handle = nullptr;
    heif_context_set_maximum_image_size_limit(context, longestSide);
    if (failed(heif_context_read_from_memory_without_copy(context, bytes.data(), bytes.size(), nullptr)) ||
        failed(heif_context_get_primary_image_handle(context, &handle)))
        return nullptr;
    Handle image(handle);
    const bool isTooLarge = heif_image_handle_get_width(handle) > longestSide ||
                            heif_image_handle_get_height(handle) > longestSide;
    return isTooLarge ? nullptr : std::move(image);
}

Picture decode(heif_image_handle* handle) {
    const Options options(heif_decoding_options_alloc());
    options->convert_hdr_to_8bit = true;
    options->strict_decoding = true; // half a picture is none
    heif_image* image = nullptr;
    if (failed(heif_decode_image(handle, &image, heif_colorspace_RGB, heif_chroma_interleaved_RGBA,
                                 options.get())))
        return nullptr;
    return Picture(image);
}

/// The result shares the pixels.
QImage toolkitImage(Picture picture) {
    constexpr auto channel = heif_channel_interleaved;
    int bytesPerRow = 0;
    const auto* pixels = heif_image_get_plane_readonly(picture.get(), channel, &bytesPerRow);
    if (!pixels)
        return {};
    const auto width = heif_image_get_width(picture.get(), channel),
               height = heif_image_get_height(picture.get(), channel);
    return QImage(
        pixels, width, height, bytesPerRow, QImage::Format_RGBA8888,
        [](void* image) { heif_image_release(static_cast<heif_image*>(image)); }, picture.release());
}

} // namespace

void loadHeicDecoders() {
    heif_init(nullptr);
}

bool isHeic(std::string_view bytes) {
    constexpr std::size_t headOfAFile = 1024;
    return heif_has_compatible_brand(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                     static_cast<int>(std::min(bytes.size(), headOfAFile)), "heic") == 1;
}

QImage decodeHeic(std::string_view bytes, int longestSide) {
    const Context context(heif_context_alloc());
    const auto handle = primaryImage(context.get(), bytes, longestSide);
    auto picture = handle ? decode(handle.get()) : nullptr;
    return picture ? toolkitImage(std::move(picture)) : QImage();
}

} // namespace tavro
