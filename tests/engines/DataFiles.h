// Access to the documents of tests/data and their expected texts.
#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <string>

namespace quillow::test {

inline std::string fileContent(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline std::filesystem::path dataFile(const std::string& name) {
    return std::filesystem::path(QUILLOW_SOURCE_DIR) / "tests/data" / name;
}

inline std::span<const std::byte> asBytes(std::string_view text) {
    return std::as_bytes(std::span(text));
}

} // namespace quillow::test
