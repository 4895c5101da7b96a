// The RunLength filter (ISO 32000-2, 7.4.5).
#pragma once

#include "engines/pdf/filters/Decoding.h"
#include "text/ByteBuffer.h"

#include <cstddef>
#include <string_view>

namespace quillow::pdf {

/// Appends at most `limit` bytes to `out`. The end-of-data byte may be missing.
[[nodiscard]] Decoding decodeRunLength(std::string_view encoded, std::size_t limit, text::ByteBuffer& out);

} // namespace quillow::pdf
