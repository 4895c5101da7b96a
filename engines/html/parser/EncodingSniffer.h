// Finds the encoding of a document: HTML Standard, section 13.2.3. UTF-16 and multi-byte UTF-8 are also recognised
// by their bytes, and a document that declares nothing goes to the encoding detector.
#pragma once

#include "text/Encoding.h"
#include "text/Utf8.h"

#include <optional>
#include <string_view>

namespace quillow::html {

/// The standard looks for a declaration in this many bytes at the start of a document.
inline constexpr std::size_t kPrescanBytes = 1024;
/// A later declaration is still believed if it is within this many bytes.
inline constexpr std::size_t kLatePrescanBytes = std::size_t{1024} * 1024;

/// "Prescan a byte stream to determine its encoding", section 13.2.3.2.
[[nodiscard]] std::optional<text::Encoding> prescanEncoding(std::string_view bytes);

/// "Get an XML encoding", section 13.2.3.2.
[[nodiscard]] std::optional<text::Encoding> xmlEncoding(std::string_view bytes);

/// "Extracting a character encoding from a meta element", section 2.4.
[[nodiscard]] std::optional<text::Encoding> encodingFromContentType(std::string_view content);

/// The encoding that a document declares: by a `meta` in its first kPrescanBytes, else in its XML declaration, else by
/// a `meta` in its first kLatePrescanBytes.
[[nodiscard]] std::optional<text::Encoding> declaredEncoding(std::string_view bytes);

struct SniffedEncoding {
    text::Encoding encoding = text::Encoding::windows1252;
    std::size_t byteOrderMarkLength = 0;
};
/// The encoding of a document that came without outside information, such as a transport header.
[[nodiscard]] SniffedEncoding sniffEncoding(std::string_view bytes);
/// The same for a caller that already knows the well-formed UTF-8 prefix of the document.
[[nodiscard]] SniffedEncoding sniffEncoding(std::string_view bytes, const text::Utf8Prefix& utf8);

} // namespace quillow::html
