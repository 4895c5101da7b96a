// Reads and writes UTF-8 by the rules of the Unicode Standard (table 3-7) and of the Encoding
// Standard (section 8.1).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillow::text {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

/// Appends one code point as UTF-8. Surrogates and values over U+10FFFF are written as U+FFFD.
void appendUtf8(std::string& out, char32_t codePoint);

/// The number of ASCII bytes at the start of the view.
[[nodiscard]] std::size_t asciiPrefixLength(std::string_view bytes);

struct Utf8Prefix {
    std::size_t bytes = 0;
    std::size_t codePoints = 0;
};
/// The longest prefix of the view that is well-formed UTF-8, in whole sequences.
[[nodiscard]] Utf8Prefix wellFormedUtf8Prefix(std::string_view bytes);

/// The size of that prefix in bytes.
[[nodiscard]] std::size_t validUtf8PrefixLength(std::string_view bytes);

/// True when the whole view is well-formed UTF-8.
[[nodiscard]] bool isValidUtf8(std::string_view bytes);

/// True when the view is well-formed UTF-8 and holds at least one byte over 0x7F.
[[nodiscard]] bool isMultiByteUtf8(std::string_view bytes);

struct DecodedCodePoint {
    char32_t codePoint; ///< U+FFFD for an ill-formed sequence
    std::size_t length; ///< bytes consumed, at least 1; for an ill-formed sequence its maximal subpart
    bool wellFormed;
};

/// The first code point of a view, which must not be empty.
[[nodiscard]] DecodedCodePoint decodeUtf8(std::string_view bytes);

} // namespace quillow::text
