#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace tavro {

/// The user's folders and files. Main thread only.
class FileManager {
public:
    using ErrorHandler = std::function<void(const std::optional<std::string>&)>;

    virtual ~FileManager() = default;
    /// Where the user's documents are kept, whether the folder is there or not; none when there is no such
    /// place.
    virtual std::optional<std::filesystem::path> documentsFolder() const = 0;
    /// The same folder, made where it is missing; none when it cannot be.
    virtual std::optional<std::filesystem::path> existingDocumentsFolder() = 0;
    virtual bool fileExists(const std::filesystem::path& file) const = 0;
    /// To a name in the same folder that nothing has. None, or the description of the error.
    [[nodiscard]] virtual std::optional<std::string> rename(const std::filesystem::path& file,
                                                            const std::string& name) = 0;
    /// Replaces the file with these bytes, or leaves what was there: also a kill at any moment leaves the one
    /// or the other. Returns at once; the handler runs on the main queue and gets none, or the description of
    /// the error.
    virtual void writeAtomically(const std::filesystem::path& file, std::string bytes,
                                 ErrorHandler handler) = 0;
};

} // namespace tavro
