#include "platform/linux/storage/XdgFileManager.h"

#include "platform/linux/storage/AtomicFile.h"

#include <QStandardPaths>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>

namespace tavro {

namespace fs = std::filesystem;

std::optional<fs::path> XdgFileManager::documentsFolder() const {
    const auto folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return folder.isEmpty() ? std::nullopt : std::optional(fs::path(folder.toStdString()));
}

std::optional<fs::path> XdgFileManager::existingDocumentsFolder() {
    const auto folder = documentsFolder();
    std::error_code error;
    if (folder)
        fs::create_directories(*folder, error);
    return folder && fs::is_directory(*folder, error) ? folder : std::nullopt;
}

bool XdgFileManager::fileExists(const fs::path& file) const {
    std::error_code error;
    return fs::exists(file, error);
}

std::optional<std::string> XdgFileManager::rename(const fs::path& file, const std::string& name) {
    const auto newFile = file.parent_path() / name;
    constexpr int here = AT_FDCWD;
    const bool isRenamed = ::renameat2(here, file.c_str(), here, newFile.c_str(), RENAME_NOREPLACE) == 0 ||
                           // Some network file systems know nothing of that.
                           (errno == EINVAL && ::rename(file.c_str(), newFile.c_str()) == 0);
    if (isRenamed)
        return std::nullopt;
    return file.string() + " cannot be renamed: " + std::strerror(errno);
}

void XdgFileManager::writeAtomically(const fs::path& file, std::string bytes, ErrorHandler handler) {
    m_background.run(
        [file, bytes = std::move(bytes)]() -> std::optional<std::string> {
            removeRemnants(file);
            const int error = replaceFile(file, bytes);
            if (error == 0)
                return std::nullopt;
            return file.string() + " cannot be written: " + std::strerror(error);
        },
        std::move(handler));
}

} // namespace tavro
