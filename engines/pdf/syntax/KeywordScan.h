// Searches a whole file for the keywords that begin and end objects (ISO 32000-2, 7.3.8, 7.3.10).
#pragma once

#include "engines/pdf/syntax/Object.h"

#include <cstdint>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

namespace quillow::pdf {

/// "N G obj".
struct ObjectHeader {
    Reference id;
    std::uint32_t begin = 0; ///< of the object number
    std::uint32_t body = 0;  ///< behind the keyword
};

/// The header at an offset, white space before it passed over.
[[nodiscard]] std::optional<ObjectHeader> objectHeaderAt(std::string_view file, std::size_t offset);

/// All keywords of a file, in its order; those that binary data contains by chance too.
struct Keywords {
    std::vector<ObjectHeader> headers;
    std::vector<std::uint32_t> ends; ///< where endobj and endstream begin

    /// The first end, or the first header, at or after an offset: there a stream ends whose length is not known.
    /// std::nullopt if there is none.
    [[nodiscard]] std::optional<std::size_t> firstAfter(std::size_t offset) const;
};
[[nodiscard]] Keywords findKeywords(std::string_view file);

/// The keywords of a file, looked for when they are first needed. Safe for use from several threads.
class FileKeywords {
public:
    explicit FileKeywords(std::string_view file)
        : file_(file) {}

    [[nodiscard]] const Keywords& get() const {
        std::call_once(once_, [this] { keywords_ = findKeywords(file_); });
        return keywords_;
    }

private:
    std::string_view file_;
    mutable std::once_flag once_;
    mutable Keywords keywords_;
};

/// Where a word begins, in the order of the file.
[[nodiscard]] std::vector<std::uint32_t> findAll(std::string_view file, std::string_view word);

} // namespace quillow::pdf
