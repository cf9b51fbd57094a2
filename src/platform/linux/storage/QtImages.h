#pragma once

#include "platform/linux/process/Background.h"
#include "platform/linux/storage/RecentPicture.h"
#include "platform/storage/Images.h"

#include <list>
#include <vector>

namespace tavro {

class Log;
class PictureProcess;

/// Pictures that a program of its own decodes, started for each, and the icons compiled into this one.
class QtImages final : public Images {
public:
    QtImages(std::filesystem::path decoder, Log& log);

    std::optional<Image> contentsOf(const std::filesystem::path& file) const override;
    void load(const std::filesystem::path& file, Detail detail, ImageHandler handler) override;
    void pngRepresentation(const Image& image, DataHandler handler) override;
    std::optional<NamedImage> named(const std::string& name) const override;
    /// Whether a whole picture is still being read or written: one that somebody wants to keep.
    bool isBusy() const { return m_wholePictures > 0 || m_background.isBusy(); }

private:
    /// A picture that is being decoded, and who waits for it.
    struct Decoding {
        RecentPicture::Version version;
        std::vector<ImageHandler> handlers;
    };

    void startDecoding(const std::filesystem::path& file, const RecentPicture::Version& version,
                       ImageHandler handler);
    std::optional<Image> resultOf(const PictureProcess& process, const RecentPicture::Version& version) const;
    void deliver(const ImageHandler& handler, const std::optional<Image>& image);
    /// One line for all pictures.
    void tellConfinement(const PictureProcess& process) const;

    const std::filesystem::path m_decoder;
    Log& m_log;
    mutable bool m_hasToldConfinement = false;
    mutable RecentPicture m_recent;
    std::list<Decoding> m_decodings;
    int m_wholePictures = 0; // that are not delivered yet
    QObject m_processes;     // their parent
    Background m_background;
};

} // namespace tavro
