#pragma once

#include "platform/simulated/process/SimulatedLog.h"
#include "platform/storage/Images.h"

#include <set>

namespace tavro {

/// Pictures on the real disk, in the one format that this machine knows: "P6" pixmaps, whatever the file's
/// name ends with.
class SimulatedImages final : public Images {
public:
    /// The longest side of a picture that can be read.
    static constexpr int largestSide = 16384;

    explicit SimulatedImages(SimulatedLog& log)
        : m_log(log) {}

    std::optional<Image> contentsOf(const std::filesystem::path& file) const override;
    /// In this machine's own format.
    std::optional<std::string> pngRepresentation(const Image& image) const override;
    std::optional<NamedImage> named(const std::string& name) const override;

    /// Writes a picture of one colour, 0xAARRGGBB.
    static void write(const std::filesystem::path& file, int width, int height, std::uint32_t color);
    /// A fault: the application was installed without this resource.
    void removeResource(const std::string& name) { m_resources.erase(name); }
    /// A fault: nothing can be encoded while it is set.
    bool failsToEncode = false;

private:
    SimulatedLog& m_log;
    std::set<std::string> m_resources{"menubar-on",   "menubar-off", "mic-on",
                                      "alert-mic-on", "mic-off",     "alert-mic-off"};
};

} // namespace tavro
