#pragma once

#include "platform/process/Result.h"

#include <filesystem>
#include <string>
#include <system_error>

namespace tavro {

/// The user's files.
class Files {
public:
    virtual ~Files() = default;
    virtual std::filesystem::path homeFolder() const = 0;
    /// The whole file, or why it cannot be read; one that is larger than preferences ever are is not.
    virtual Result<std::string, std::error_code> contents(const std::filesystem::path& file) const = 0;

    /// The path with a leading tilde replaced by the home folder.
    std::filesystem::path expandingTilde(const std::string& path) const {
        return path.starts_with("~/") ? homeFolder() / path.substr(2) : std::filesystem::path(path);
    }
};

} // namespace tavro
