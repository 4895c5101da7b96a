// The ASCIIHex filter (ISO 32000-2, 7.4.2).
#pragma once

#include "engines/pdf/filters/Decoding.h"
#include "text/ByteBuffer.h"

#include <cstddef>
#include <string_view>

namespace quillow::pdf {

/// Appends at most `limit` bytes to `out`. The `>` at the end may be missing; a last single digit counts as if 0
/// followed. Another character ends the data.
[[nodiscard]] Decoding decodeAsciiHex(std::string_view encoded, std::size_t limit, text::ByteBuffer& out);

} // namespace quillow::pdf
