#pragma once

#include "platform/linux/process/Background.h"
#include "platform/storage/FileManager.h"

namespace tavro {

/// The folders that the user's `user-dirs.dirs` names (xdg-user-dirs), else those of the home folder. Files
/// are written on a thread of its own: disks may take their time.
class XdgFileManager final : public FileManager {
public:
    std::optional<std::filesystem::path> documentsFolder() const override;
    std::optional<std::filesystem::path> existingDocumentsFolder() override;
    bool fileExists(const std::filesystem::path& file) const override;
    std::optional<std::string> rename(const std::filesystem::path& file, const std::string& name) override;
    void writeAtomically(const std::filesystem::path& file, std::string bytes, ErrorHandler handler) override;
    /// Whether a file is still to be written.
    bool isBusy() const { return m_background.isBusy(); }

private:
    Background m_background;
};

} // namespace tavro
