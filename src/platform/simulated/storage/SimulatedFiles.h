#pragma once

#include "platform/storage/Files.h"

#include <map>

namespace tavro {

/// Real files in a home folder of the machine's own, gone with it. They are on the disk once somebody has
/// asked where.
class SimulatedFiles final : public Files {
public:
    SimulatedFiles() = default;
    ~SimulatedFiles() override;
    SimulatedFiles(const SimulatedFiles&) = delete;
    SimulatedFiles& operator=(const SimulatedFiles&) = delete;

    std::filesystem::path homeFolder() const override;
    Result<std::string, std::error_code> contents(const std::filesystem::path& file) const override;

    /// A path below the home folder; makes the folders where they are missing.
    void write(const std::filesystem::path& file, const std::string& bytes);
    /// A file or a folder.
    void remove(const std::filesystem::path& file);

private:
    void store(const std::filesystem::path& file, const std::string& bytes) const;

    mutable std::filesystem::path m_home; // empty before it exists
    mutable std::map<std::filesystem::path, std::string> m_unstored;
};

} // namespace tavro
