// A temporary folder for one test, with functions to fill it and to list it.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::test {

inline std::string readFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "quillow-test.XXXXXX").string();
        path_ = ::mkdtemp(pattern.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    /// The path of an entry of the folder.
    [[nodiscard]] std::string at(std::string_view name) const { return (path_ / name).string(); }

    std::string put(std::string_view name, std::string_view content) const {
        const std::filesystem::path path = path_ / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << content;
        return path.string();
    }

    /// The sorted names in the folder or in a subfolder, hidden ones included.
    [[nodiscard]] std::vector<std::string> names(std::string_view below = {}) const {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(path_ / below))
            found.push_back(entry.path().filename().string());
        std::sort(found.begin(), found.end());
        return found;
    }

private:
    std::filesystem::path path_;
};

} // namespace quillow::test
