// What a document's content shows it to be, whatever its name says. Only this file judges content; the RTF engine
// merely finds where the RTF in a file begins.
#pragma once

#include "engines/DocumentKind.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace quillow {

/// A PDF header counts up to this offset (ISO 32000-1, annex H, implementation note 13: within the first 1024 bytes).
inline constexpr std::size_t kPdfHeaderWindow = 1024;

/// The kind that the first bytes show: for input without a name, and to say what a mislabelled file is. RTF and HTML
/// begin after a byte-order mark and blanks, and may be in UTF-16; HTML as in the MIME Sniffing Standard, section
/// 7.1, also after an XML declaration. Never returns rtfd.
[[nodiscard]] std::optional<DocumentKind> sniffDocumentKind(std::span<const std::byte> bytes);

/// A phrase such as "a PNG image" or "a MIME web archive", if the bytes are a common kind of file that no engine reads.
/// Examines the first 8 KiB.
[[nodiscard]] std::optional<std::string_view> describeForeignContent(std::span<const std::byte> bytes);

/// A phrase for what the content is, if it plainly is not of the kind that it came as: another kind, foreign content or
/// binary data. A PDF may have anything before its header, so ask about a PDF only after its engine has failed.
[[nodiscard]] std::optional<std::string_view> describeOtherContent(std::span<const std::byte> bytes, DocumentKind kind);

} // namespace quillow
