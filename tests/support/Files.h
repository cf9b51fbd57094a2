#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// All that a file holds; nothing where there is none.
inline std::string contentsOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline void write(const std::filesystem::path& file, const std::string& contents) {
    std::ofstream(file, std::ios::binary) << contents;
}
