// The ASCII85 filter (ISO 32000-2, 7.4.3).
#pragma once

#include "engines/pdf/filters/Decoding.h"
#include "text/ByteBuffer.h"

#include <cstddef>
#include <string_view>

namespace quillow::pdf {

/// Appends at most `limit` bytes to `out`. `<~` at the start is skipped; `~>` at the end may be missing. A character or
/// a group that cannot be ends the data.
[[nodiscard]] Decoding decodeAscii85(std::string_view encoded, std::size_t limit, text::ByteBuffer& out);

} // namespace quillow::pdf
