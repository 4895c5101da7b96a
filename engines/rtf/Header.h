// Finds the start of the RTF document in a file.
#pragma once

#include <string>
#include <string_view>

namespace quillow::rtf {

struct Source {
    /// The document from its first brace on, or from the byte after it if it is missing; the whole file, to be read as
    /// plain text, if there is no RTF in it.
    std::string_view bytes;
    std::string transcoded;   ///< holds `bytes` if the file is UTF-16
    bool isRtf = false;       ///< false for plain text
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
