// How a string of a composite font is cut into codes of one to four bytes (ISO 32000-2, 9.7.6.3).
#pragma once

#include <cstdint>
#include <span>

namespace quillow::pdf {

inline constexpr unsigned kMaxBytesOfCode = 4;

/// A range of codes of one length. It is a box: each byte of a code lies between the same bytes of `first` and
/// `last`.
struct CodespaceRange {
    std::uint32_t first = 0; ///< big-endian: the last byte is the lowest
    std::uint32_t last = 0;
    std::uint8_t bytes = 0; ///< 1 to kMaxBytesOfCode
};

/// A code of a string.
struct CharacterCode {
    std::uint32_t value = 0; ///< big-endian
    std::uint8_t bytes = 0;
    bool isInCodespace = false;
};

/// The code that begins at `p`, and moves `p` behind it. `p` must not be the end. Bytes that are in no range are
/// consumed as the standard says: as many as the range has that they matched longest, or the shortest code. At least
/// one byte is consumed, and never one behind the end.
[[nodiscard]] CharacterCode nextCode(std::span<const CodespaceRange> ranges, const char*& p, const char* end);

} // namespace quillow::pdf
