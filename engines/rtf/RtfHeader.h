// Where an RTF document begins in its file, and what the file is when it is none.
#pragma once

#include <string>
#include <string_view>

namespace quillow::rtf {

struct Source {
    enum class Kind {
        rtf,   ///< `bytes` begin at the document's first brace, or behind it where it is missing
        text,  ///< no RTF: `bytes` are the whole file's, to be taken as text
        other, ///< another format: `detail` says which
    };
    Kind kind = Kind::text;
    std::string_view bytes;
    std::string transcoded; ///< holds `bytes` where the file is UTF-16
    std::string detail;
    bool isUtf8 = false;      ///< transcoded, so every byte over 0x7F is UTF-8
    bool lostOpening = false; ///< the document's first brace is missing
    bool isFragment = false;  ///< a body without the document's own group
};

/// Looks for the document. The answer's `bytes` point into `file` or into the answer's `transcoded`.
void findDocument(std::string_view file, Source& source);

/// The start of the next "{\rtf" in `bytes`, or npos. Line ends and blanks may stand between brace and word.
[[nodiscard]] std::size_t findRtfGroup(std::string_view bytes, std::size_t from);

} // namespace quillow::rtf
