#pragma once

#include <filesystem>
#include <stdexcept>
#include <stdlib.h>
#include <string>

/// Gone, with all that is in it, at the end of the scope.
class TemporaryFolder {
public:
    TemporaryFolder()
        : m_path((std::filesystem::temp_directory_path() / "tavro-test.XXXXXX").string()) {
        if (!::mkdtemp(m_path.data()))
            throw std::runtime_error("no temporary folder");
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    std::filesystem::path path() const { return m_path; }

private:
    std::string m_path;
};
