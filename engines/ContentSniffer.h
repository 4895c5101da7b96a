// What a document's first bytes show it to be, whatever its name says.
#pragma once

#include "engines/DocumentKind.h"

#include <cstddef>
#include <string_view>

namespace quillow {

/// Where a PDF header still counts (ISO 32000-1, annex H, note 13 on implementations: within the first 1024 bytes).
inline constexpr std::size_t kPdfHeaderWindow = 1024;

/// True when the bytes begin, after a byte-order mark and blanks, with an RTF header; in UTF-16 too.
[[nodiscard]] bool looksLikeRtf(std::string_view bytes);

/// True when the bytes begin, after a byte-order mark and blanks, with a PDF header.
[[nodiscard]] bool startsAsPdf(std::string_view bytes);

/// True when a PDF header stands within the first kPdfHeaderWindow bytes.
[[nodiscard]] bool looksLikePdf(std::string_view bytes);

/// True when the bytes begin, after a byte-order mark and blanks, as the MIME Sniffing Standard (section 7.1) says that HTML
/// does; an XML declaration before it is stepped over; in UTF-16 too.
[[nodiscard]] bool looksLikeHtml(std::string_view bytes);

/// "an RTF document", "a PDF", "an HTML page".
[[nodiscard]] std::string_view describeKind(DocumentKind kind);

} // namespace quillow
