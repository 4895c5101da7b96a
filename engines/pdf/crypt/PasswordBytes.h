// A password in the encoding of old revisions.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillow::pdf {

/// The bytes of a UTF-8 text in PDFDocEncoding (ISO 32000-2, annex D.3), which revisions 2 to 4 hash. Nullopt if it has
/// other characters or is no UTF-8.
[[nodiscard]] std::optional<std::string> pdfDocBytes(std::string_view utf8);

} // namespace quillow::pdf
