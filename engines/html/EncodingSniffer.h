// Which encoding a document is in: HTML Standard, section 13.2.3, with UTF-8 and detection by content where nothing is declared.
#pragma once

#include "text/Encoding.h"
#include "text/Utf8.h"

#include <optional>
#include <string_view>

namespace quillow::html {

/// The first bytes of a document in which the standard looks for a declaration.
inline constexpr std::size_t kPrescanBytes = 1024;
/// A declaration further on is still believed up to here.
inline constexpr std::size_t kLatePrescanBytes = std::size_t{1024} * 1024;

/// "Prescan a byte stream to determine its encoding", section 13.2.3.2.
[[nodiscard]] std::optional<text::Encoding> prescanEncoding(std::string_view bytes);

/// "Get an XML encoding", section 13.2.3.2.
[[nodiscard]] std::optional<text::Encoding> xmlEncoding(std::string_view bytes);

/// "Extracting a character encoding from a meta element", section 2.4.
[[nodiscard]] std::optional<text::Encoding> encodingFromContentType(std::string_view content);

/// What a document says about itself: in its first bytes, in its XML declaration, or further on.
[[nodiscard]] std::optional<text::Encoding> declaredEncoding(std::string_view bytes);

struct SniffedEncoding {
    text::Encoding encoding = text::Encoding::windows1252;
    std::size_t byteOrderMarkLength = 0;
};
/// The encoding of a document that came without any word about it.
[[nodiscard]] SniffedEncoding sniffEncoding(std::string_view bytes);
/// The same where it is known already how much of the document is UTF-8.
[[nodiscard]] SniffedEncoding sniffEncoding(std::string_view bytes, const text::Utf8Prefix& utf8);

} // namespace quillow::html
