// Hexadecimal strings of content streams (ISO 32000-2, 7.3.4.3): one pass finds the end and decodes the bytes.
#pragma once

#include "text/Ascii.h"
#include "text/ByteBlock.h"

#include <cstdint>
#include <string_view>

namespace quillow::pdf {

/// Decodes the digits from `p` up to ">" or to `end`, writes the bytes at `to` and moves `to` behind them. Other bytes
/// between the digits are ignored, and an odd digit is followed by a 0. Returns the place of ">" or `end`. Behind
/// `end`, ContentBuffer::kGuard follows. `to` needs room for half of the digits and kHexOverhang.
[[nodiscard]] const char* decodeHexString(const char* p, const char* end, char*& to);

/// Bytes that may be written behind the last one.
inline constexpr std::size_t kHexOverhang = 16;

/// The byte of two digits; negative if they are not two digits.
[[nodiscard]] inline int hexPairAt(const char* p) {
    return text::kHexValues[static_cast<std::uint8_t>(p[0])] << 4 | text::kHexValues[static_cast<std::uint8_t>(p[1])];
}

/// The same for the rest of a string after some bytes.
[[nodiscard]] const char* decodeOtherHex(const char* p, const char* end, char*& to);

/// Writes the bytes of digits that may have anything between them, and returns the place behind them. An odd digit is
/// followed by a 0.
[[nodiscard]] char* decodeLooseHex(std::string_view digits, char* to);

/// Strings of one byte, between the numbers of a TJ, are so frequent that they are worth a way of their own.
inline const char* decodeHexString(const char* p, const char* end, char*& to) {
    const int byte = hexPairAt(p);
    if (byte >= 0 && p[2] == '>' && p + 2 < end) {
        *to++ = static_cast<char>(byte);
        return p + 2;
    }
    return decodeOtherHex(p, end, to);
}

} // namespace quillow::pdf
