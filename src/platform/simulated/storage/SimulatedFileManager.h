#pragma once

#include "platform/simulated/process/Journal.h"
#include "platform/simulated/process/SimulatedMainQueue.h"
#include "platform/storage/FileManager.h"

namespace tavro {

/// A home folder on the real disk, empty at first and gone with the machine.
class SimulatedFileManager final : public FileManager {
public:
    SimulatedFileManager(Journal& journal, SimulatedMainQueue& queue);
    ~SimulatedFileManager() override;

    std::optional<std::filesystem::path> documentsFolder() const override { return home() / "Documents"; }
    std::optional<std::filesystem::path> existingDocumentsFolder() override;
    bool fileExists(const std::filesystem::path& file) const override;
    std::optional<std::string> rename(const std::filesystem::path& file, const std::string& name) override;
    void writeAtomically(const std::filesystem::path& file, std::string bytes, ErrorHandler handler) override;

    /// Made when it is first asked for.
    const std::filesystem::path& home() const;
    /// Faults, while they are set: there is no Documents folder, and the disk takes no writes.
    bool hasNoDocuments = false;
    std::optional<std::string> writeError;

private:
    Journal& m_journal;
    SimulatedMainQueue& m_queue;
    mutable std::filesystem::path m_home;
};

} // namespace tavro
