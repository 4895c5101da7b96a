// Finds the start of the RTF document in a file, or says what the file is instead.
#pragma once

#include <string>
#include <string_view>

namespace quillow::rtf {

struct Source {
    enum class Kind {
        rtf,   ///< `bytes` begin at the document's first brace, or after it if it is missing
        text,  ///< not RTF: `bytes` are the whole file, to be read as plain text
        other, ///< another format: `detail` says which
    };
    Kind kind = Kind::text;
    std::string_view bytes;
    std::string transcoded; ///< holds `bytes` if the file is UTF-16
    std::string detail;
    bool isUtf8 = false;      ///< `bytes` are transcoded: every byte over 0x7F is UTF-8
    bool lostOpening = false; ///< the document's first brace is missing
    bool isFragment = false;  ///< a body without the document's own group
};

/// Looks for the document and fills `source`. Its `bytes` point into `file` or into its `transcoded`.
void findDocument(std::string_view file, Source& source);

/// The offset of the first "{\rtf" in `bytes` at or after `from`, or npos. Line ends and blanks may be between
/// brace and word.
[[nodiscard]] std::size_t findRtfGroup(std::string_view bytes, std::size_t from);

} // namespace quillow::rtf
