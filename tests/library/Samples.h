// The samples as the tests of the library read them.
#pragma once

#include "library/quillowtext.h"
#include "tests/cli/TemporaryFolder.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace quillow::test {

struct Sample {
    std::string name;
    std::string path;
    std::string bytes;
    std::uint32_t kind = QUILLOW_BY_CONTENT;
};

/// The documents in samples/, in the order of their names.
inline std::vector<Sample> allSamples() {
    namespace fs = std::filesystem;
    std::vector<Sample> samples;
    for (const fs::directory_entry& entry : fs::directory_iterator(fs::path(QUILLOW_SOURCE_DIR) / "samples")) {
        const fs::path path = entry.path();
        const std::string extension = path.extension().string();
        const bool isBundle = extension == ".rtfd";
        const std::uint32_t kind = extension == ".rtf"    ? QUILLOW_RTF
                                   : isBundle             ? QUILLOW_RTFD
                                   : extension == ".pdf"  ? QUILLOW_PDF
                                   : extension == ".html" ? QUILLOW_HTML
                                   : extension == ".htm"  ? QUILLOW_HTML
                                                          : QUILLOW_BY_CONTENT;
        if (kind == QUILLOW_BY_CONTENT) continue;
        samples.push_back({path.filename(), path, readFile(isBundle ? path / "TXT.rtf" : path), kind});
    }
    std::sort(samples.begin(), samples.end(), [](const Sample& a, const Sample& b) { return a.name < b.name; });
    return samples;
}

struct FreeResult {
    void operator()(const quillow_result* result) const { quillow_free(result); }
};
using Result = std::unique_ptr<const quillow_result, FreeResult>;

inline Result extracted(const std::string& bytes, const quillow_options& options) {
    return Result(quillow_extract(bytes.data(), bytes.size(), &options));
}

inline Result extracted(const std::string& bytes, std::uint32_t kind = QUILLOW_BY_CONTENT, std::uint32_t flags = 0) {
    quillow_options options = QUILLOW_OPTIONS_INIT;
    options.kind = kind;
    options.flags = flags;
    return extracted(bytes, options);
}

inline std::string textOf(const Result& result) {
    return result->text == nullptr ? "(no text)" : std::string(result->text, result->text_size);
}

} // namespace quillow::test
