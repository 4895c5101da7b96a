// The tokens of PDF syntax (ISO 32000-2, 7.2, 7.3). Files and content streams share it.
#pragma once

#include "text/ByteBuffer.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillow::pdf {

/// Classes of bytes (7.2.3, tables 1 and 2).
enum class ByteClass : std::uint8_t { regular, whiteSpace, delimiter };
extern const std::array<ByteClass, 256> kByteClasses;

[[nodiscard]] inline ByteClass classOf(char byte) {
    return kByteClasses[static_cast<std::uint8_t>(byte)];
}
[[nodiscard]] inline bool isWhiteSpace(char byte) {
    return classOf(byte) == ByteClass::whiteSpace;
}
[[nodiscard]] inline bool isRegular(char byte) {
    return classOf(byte) == ByteClass::regular;
}

/// The first byte in [p, end) that is neither white space nor in a comment (7.2.4).
[[nodiscard]] const char* skipWhiteSpace(const char* p, const char* end);

/// A number as files write it (7.3.3), and as they should not: "--5", "1.2.3", "4-5". Never infinite.
struct NumberToken {
    double value = 0;
    bool isInteger = false;
    const char* end = nullptr; ///< behind it; the same as its start if no number is there
};
[[nodiscard]] NumberToken readNumber(const char* p, const char* end);

/// The bytes of a literal or hexadecimal string (7.3.4.2, 7.3.4.3).
struct StringToken {
    std::string_view raw;      ///< between the brackets
    bool isPlain = false;      ///< `raw` has no escape, no CR and no hexadecimal digits: it is the string itself
    const char* end = nullptr; ///< behind the closing bracket, or the end of the bytes if it is missing
};
/// `p` is at "(" or at "<".
[[nodiscard]] StringToken readString(const char* p, const char* end);
/// The string's own bytes appended to `out`. `opening` is "(" or "<".
void unescapeString(std::string_view raw, char opening, text::ByteBuffer& out);

/// The bytes of a name behind its slash, at `p`, #xx not yet replaced.
[[nodiscard]] std::string_view readRawName(const char* p, const char* end);

} // namespace quillow::pdf
