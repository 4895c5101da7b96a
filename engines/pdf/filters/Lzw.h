// The LZW filter (ISO 32000-2, 7.4.4.2).
#pragma once

#include "engines/pdf/filters/Decoding.h"
#include "text/ByteBuffer.h"

#include <cstddef>
#include <string_view>

namespace quillow::pdf {

/// Appends at most `limit` bytes to `out`. The first clear code and the end-of-data code may be missing. A code that is
/// not yet in the table ends the data.
[[nodiscard]] Decoding decodeLzw(std::string_view encoded, bool earlyChange, std::size_t limit, text::ByteBuffer& out);

} // namespace quillow::pdf
