// Text strings outside content streams: titles, form values, ActualText (ISO 32000-2, 7.9.2.2).
#pragma once

#include <string>
#include <string_view>

namespace quillow::pdf {

/// UTF-16BE or UTF-16LE with a byte-order mark, UTF-8 with one, else PDFDocEncoding (annex D.3). Language escapes
/// (U+001B) are removed, invalid sequences become U+FFFD.
[[nodiscard]] std::u32string decodeTextString(std::string_view bytes);

} // namespace quillow::pdf
