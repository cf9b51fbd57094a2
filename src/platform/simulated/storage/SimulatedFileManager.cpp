#include "platform/simulated/storage/SimulatedFileManager.h"

#include <cstdlib>
#include <fstream>

namespace tavro {

namespace fs = std::filesystem;

SimulatedFileManager::SimulatedFileManager(Journal& journal, SimulatedMainQueue& queue)
    : m_journal(journal)
    , m_queue(queue) {}

SimulatedFileManager::~SimulatedFileManager() {
    std::error_code ignored;
    if (!m_home.empty())
        fs::remove_all(m_home, ignored);
}

const fs::path& SimulatedFileManager::home() const {
    if (m_home.empty()) {
        auto name = (fs::temp_directory_path() / "tavro-home-XXXXXX").string();
        m_home = mkdtemp(name.data()) ? name : "/nonexistent";
    }
    return m_home;
}

std::optional<fs::path> SimulatedFileManager::existingDocumentsFolder() {
    if (hasNoDocuments)
        return std::nullopt;
    fs::create_directories(home() / "Documents");
    return home() / "Documents";
}

bool SimulatedFileManager::fileExists(const fs::path& file) const {
    std::error_code error;
    return fs::exists(file, error);
}

std::optional<std::string> SimulatedFileManager::rename(const fs::path& file, const std::string& name) {
    m_journal.record("fileManager.rename", file.filename().string(), name);
    if (!writeError)
        fs::rename(file, file.parent_path() / name);
    return writeError;
}

void SimulatedFileManager::writeAtomically(const fs::path& file, std::string bytes, ErrorHandler handler) {
    m_journal.record("fileManager.writeAtomically", file.filename().string(), bytes.size());
    if (!writeError)
        std::ofstream(file, std::ios::binary) << bytes;
    m_queue.async([error = writeError, handler = std::move(handler)] { handler(error); });
}

} // namespace tavro
