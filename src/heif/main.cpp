// Turns one HEIC picture into a PNG file on standard output, hardly compressed:
//   tavropro-heif FILE LONGEST_SIDE
// Exits with 1, and without a word, when it holds no whole picture within the bounds. A program of its own:
// the decoders take megabytes that TavroPRO need not keep for a moment's use, and what a hostile file makes
// them do ends with it.

#include <QFile>
#include <QImage>

#include <libheif/heif.h>

#include <cstdlib>
#include <memory>
#include <sys/prctl.h>
#include <sys/resource.h>

#include <csignal>

namespace {

constexpr rlim_t mostMemory = rlim_t{3} << 30;
constexpr rlim_t mostSeconds = 60;

template <auto release>
struct Release {
    template <class T>
    void operator()(T* object) const {
        release(object);
    }
};
using Context = std::unique_ptr<heif_context, Release<&heif_context_free>>;
using Handle = std::unique_ptr<heif_image_handle, Release<&heif_image_handle_release>>;
using Options = std::unique_ptr<heif_decoding_options, Release<&heif_decoding_options_free>>;
using Picture = std::unique_ptr<heif_image, Release<&heif_image_release>>;

bool failed(const heif_error& error) {
    return error.code != heif_error_Ok;
}

void limitResources() {
    sigset_t none; // the parent handles some otherwise, and a child inherits that
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const rlimit seconds{mostSeconds, mostSeconds};
    setrlimit(RLIMIT_CPU, &seconds);
#ifndef __SANITIZE_ADDRESS__ // which maps more than there is
    const rlimit memory{mostMemory, mostMemory};
    setrlimit(RLIMIT_AS, &memory);
#endif
}

Handle primaryImage(heif_context* context, const char* file, int longestSide) {
    heif_image_handle* handle = nullptr;
    heif_context_set_maximum_image_size_limit(context, longestSide);
    if (failed(heif_context_read_from_file(context, file, nullptr)) ||
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
QImage toolkitImage(heif_image* picture) {
    constexpr auto channel = heif_channel_interleaved;
    int bytesPerRow = 0;
    const auto* pixels = heif_image_get_plane_readonly(picture, channel, &bytesPerRow);
    return pixels ? QImage(pixels, heif_image_get_width(picture, channel),
                           heif_image_get_height(picture, channel), bytesPerRow, QImage::Format_RGBA8888)
                  : QImage();
}

} // namespace

int main(int argc, char** argv) {
    constexpr int hardlyCompressed = 100;
    limitResources();
    if (argc != 3)
        return EXIT_FAILURE;
    const Context context(heif_context_alloc());
    const auto handle = primaryImage(context.get(), argv[1], std::atoi(argv[2]));
    const auto picture = handle ? decode(handle.get()) : nullptr;
    QFile output;
    const bool isDone = picture && output.open(stdout, QIODevice::WriteOnly) &&
                        toolkitImage(picture.get()).save(&output, "PNG", hardlyCompressed) && output.flush();
    return isDone ? EXIT_SUCCESS : EXIT_FAILURE;
}
