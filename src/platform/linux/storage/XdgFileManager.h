#pragma once

#include "platform/storage/FileManager.h"

namespace tavro {

/// The folders that the user's `user-dirs.dirs` names (xdg-user-dirs), else those of the home folder.
class XdgFileManager final : public FileManager {
public:
    std::optional<std::filesystem::path> documentsFolder() const override;
    std::optional<std::filesystem::path> existingDocumentsFolder() override;
    bool fileExists(const std::filesystem::path& file) const override;
    std::optional<std::string> rename(const std::filesystem::path& file, const std::string& name) override;
    std::optional<std::string> writeAtomically(const std::filesystem::path& file,
                                               std::string_view bytes) override;
};

} // namespace tavro
