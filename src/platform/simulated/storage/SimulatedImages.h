#pragma once

#include "platform/simulated/process/SimulatedLog.h"
#include "platform/simulated/process/SimulatedMainQueue.h"
#include "platform/storage/Images.h"

#include <map>
#include <set>

namespace tavro {

/// Pictures on the real disk, in the one format that this machine knows: "P6" pixmaps, whatever the file's
/// name ends with.
class SimulatedImages final : public Images {
public:
    /// The longest side of a picture that can be read.
    static constexpr int largestSide = 16384;

    SimulatedImages(SimulatedLog& log, SimulatedMainQueue& queue)
        : m_log(log)
        , m_queue(queue) {}

    std::optional<Image> contentsOf(const std::filesystem::path& file) const override;
    void load(const std::filesystem::path& file, Detail detail, ImageHandler handler) override;
    /// In this machine's own format.
    void pngRepresentation(const Image& image, DataHandler handler) override;
    std::optional<NamedImage> named(const std::string& name) const override;

    /// Writes a picture of one colour, 0xAARRGGBB.
    static void write(const std::filesystem::path& file, int width, int height, std::uint32_t color);
    /// A fault: the application was installed without this resource.
    void removeResource(const std::string& name) { m_resources.erase(name); }
    /// What reading and encoding take.
    MainQueue::Duration timeForEach{0};
    /// A fault: nothing can be encoded while it is set.
    bool failsToEncode = false;

private:
    std::optional<std::string> encoded(const Image& image) const;

    struct Loaded {
        Image picture; // without its pixels
        std::weak_ptr<const std::uint8_t> pixels;
    };

    SimulatedLog& m_log;
    SimulatedMainQueue& m_queue;
    std::map<std::filesystem::path, Loaded> m_loaded;
    std::set<std::string> m_resources{"menubar-on",   "menubar-off", "mic-on",
                                      "alert-mic-on", "mic-off",     "alert-mic-off"};
};

} // namespace tavro
