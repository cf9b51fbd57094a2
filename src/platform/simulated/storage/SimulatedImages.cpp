#include "platform/simulated/storage/SimulatedImages.h"

#include <cstring>
#include <fstream>
#include <vector>

namespace tavro {

namespace {

std::uint32_t wordAt(const std::vector<char>& samples, std::size_t pixel) {
    std::uint32_t word = 0xff;
    for (std::size_t index = 0; index < 3; ++index)
        word = word << 8 | static_cast<unsigned char>(samples[3 * pixel + index]);
    return word;
}

bool isSame(const Image& one, const Image& other, const std::shared_ptr<const std::uint8_t>& pixels) {
    return pixels && one.pixelWidth == other.pixelWidth && one.pixelHeight == other.pixelHeight &&
           std::memcmp(one.pixels.get(), pixels.get(),
                       static_cast<std::size_t>(one.pixelHeight) * one.bytesPerRow) == 0;
}

} // namespace

std::optional<Image> SimulatedImages::contentsOf(const std::filesystem::path& file) const {
    std::ifstream stream(file, std::ios::binary);
    std::string format;
    int width = 0;
    int height = 0;
    int maximum = 0;
    stream >> format >> width >> height >> maximum;
    if (!stream || stream.get() != '\n' || format != "P6" || maximum != 255)
        return std::nullopt;
    if (width < 1 || height < 1 || width > largestSide || height > largestSide)
        return std::nullopt;
    const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    std::vector<char> samples(3 * count);
    if (!stream.read(samples.data(), static_cast<std::streamsize>(samples.size())))
        return std::nullopt;
    const auto words = std::make_shared<std::vector<std::uint32_t>>(count);
    for (std::size_t pixel = 0; pixel < count; ++pixel)
        (*words)[pixel] = wordAt(samples, pixel);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(words->data());
    return Image{width,
                 height,
                 static_cast<std::size_t>(width) * sizeof(std::uint32_t),
                 std::shared_ptr<const std::uint8_t>(words, bytes),
                 {static_cast<double>(width), static_cast<double>(height)}};
}

void SimulatedImages::load(const std::filesystem::path& file, Detail, ImageHandler handler) {
    auto image = contentsOf(file);
    const auto& before = m_loaded[file];
    if (image && isSame(*image, before.picture, before.pixels.lock()))
        image->pixels = before.pixels.lock();
    if (image)
        m_loaded[file] = {*image, image->pixels};
    m_loaded[file].picture.pixels.reset();
    m_queue.asyncAfter(timeForEach, [image, handler = std::move(handler)] { handler(image); });
}

void SimulatedImages::pngRepresentation(const Image& image, DataHandler handler) {
    m_queue.asyncAfter(timeForEach, [data = encoded(image), handler = std::move(handler)] { handler(data); });
}

std::optional<std::string> SimulatedImages::encoded(const Image& image) const {
    if (failsToEncode)
        return std::nullopt;
    std::string bytes =
        "P6\n" + std::to_string(image.pixelWidth) + ' ' + std::to_string(image.pixelHeight) + "\n255\n";
    for (int y = 0; y < image.pixelHeight; ++y)
        for (int x = 0; x < image.pixelWidth; ++x) {
            std::uint32_t word = 0;
            const auto offset =
                static_cast<std::size_t>(y) * image.bytesPerRow + static_cast<std::size_t>(x) * sizeof(word);
            std::memcpy(&word, image.pixels.get() + offset, sizeof(word));
            for (const int shift : {16, 8, 0})
                bytes.push_back(static_cast<char>(word >> shift & 0xff));
        }
    return bytes;
}

std::optional<NamedImage> SimulatedImages::named(const std::string& name) const {
    if (m_resources.contains(name))
        return NamedImage{name};
    m_log.diagnose("No image named " + name);
    return std::nullopt;
}

void SimulatedImages::write(const std::filesystem::path& file, int width, int height, std::uint32_t color) {
    std::ofstream stream(file, std::ios::binary);
    stream << "P6\n" << width << ' ' << height << "\n255\n";
    for (int pixel = 0; pixel < width * height; ++pixel)
        for (const int shift : {16, 8, 0})
            stream.put(static_cast<char>(color >> shift & 0xff));
}

} // namespace tavro
