#include "platform/simulated/storage/SimulatedFiles.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <utility>

namespace tavro {

SimulatedFiles::~SimulatedFiles() {
    std::error_code ignored;
    if (!m_home.empty())
        std::filesystem::remove_all(m_home, ignored);
}

std::filesystem::path SimulatedFiles::homeFolder() const {
    if (!m_home.empty())
        return m_home;
    auto name = (std::filesystem::temp_directory_path() / "tavro-home-XXXXXX").string();
    if (!mkdtemp(name.data()))
        throw std::system_error(errno, std::generic_category(), name);
    m_home = name;
    for (const auto& [file, bytes] : std::exchange(m_unstored, {}))
        store(file, bytes);
    return m_home;
}

Result<std::string, std::error_code> SimulatedFiles::contents(const std::filesystem::path& file) const {
    if (std::filesystem::is_directory(file))
        return std::make_error_code(std::errc::is_a_directory);
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return std::error_code(errno, std::generic_category());
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

void SimulatedFiles::write(const std::filesystem::path& file, const std::string& bytes) {
    if (m_home.empty())
        m_unstored.insert_or_assign(file, bytes);
    else
        store(file, bytes);
}

void SimulatedFiles::store(const std::filesystem::path& file, const std::string& bytes) const {
    std::filesystem::create_directories((m_home / file).parent_path());
    std::ofstream(m_home / file, std::ios::binary) << bytes;
}

void SimulatedFiles::remove(const std::filesystem::path& file) {
    std::filesystem::remove_all(homeFolder() / file);
}

} // namespace tavro
