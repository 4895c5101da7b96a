// The generated indexes of the Encoding Standard that are not double-byte sets (those are in PairTable.h).
#pragma once

#include "text/Encoding.h"

#include <cstddef>
#include <cstdint>

namespace quillow::text {

/// The single-byte indexes, for each byte from 0x80 on; 0 if the index has no character for it. They are in the
/// order of `Encoding`, without ISO-8859-8-I, which shares the index of ISO-8859-8.
extern const std::uint16_t kSingleByteIndexes[27][128];

/// The index of a single-byte encoding.
[[nodiscard]] const std::uint16_t* singleByteIndex(Encoding encoding);

/// One range of index gb18030 ranges: code points from `codePoint` on for pointers from `pointer` on.
struct Gb18030Range {
    std::uint32_t pointer;
    char32_t codePoint;
};
extern const Gb18030Range kGb18030Ranges[];
extern const std::size_t kGb18030RangeCount;

} // namespace quillow::text
