#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tavro {

/// Reads a regular file of at most that many bytes. 0, or the errno that stopped it: EISDIR and EINVAL for
/// what is no regular file, EFBIG for a larger one.
[[nodiscard]] int readFile(const std::filesystem::path& file, std::size_t atMost, std::string& bytes);

/// Replaces the file with these bytes, mode 0600, or leaves it as it is: written to a temporary file beside
/// it, synchronized, renamed. Makes the folder where it is missing. 0, or the errno that stopped it.
[[nodiscard]] int replaceFile(const std::filesystem::path& file, std::string_view bytes);

/// Removes the temporary files of replacements that a kill has cut off.
void removeRemnants(const std::filesystem::path& file);

} // namespace tavro
