// Ranges of code points that Unicode gives a special meaning (The Unicode Standard, chapter 23), and UTF-16's pairs.
#pragma once

namespace quillow::text {

inline constexpr char32_t kFirstSurrogate = 0xD800;
inline constexpr char32_t kFirstLowSurrogate = 0xDC00;
inline constexpr char32_t kLastSurrogate = 0xDFFF;
inline constexpr char32_t kFirstSupplementary = 0x10000; ///< the first code point that UTF-16 writes as a pair
inline constexpr char32_t kLastCodePoint = 0x10FFFF;

/// The first half of a UTF-16 pair.
[[nodiscard]] constexpr bool isHighSurrogate(char32_t c) {
    return c >= kFirstSurrogate && c < kFirstLowSurrogate;
}

/// The second half of a UTF-16 pair.
[[nodiscard]] constexpr bool isLowSurrogate(char32_t c) {
    return c >= kFirstLowSurrogate && c <= kLastSurrogate;
}

[[nodiscard]] constexpr bool isSurrogate(char32_t c) {
    return c >= kFirstSurrogate && c <= kLastSurrogate;
}

/// The code point of a UTF-16 pair.
[[nodiscard]] constexpr char32_t combineSurrogates(char32_t high, char32_t low) {
    return kFirstSupplementary + ((high - kFirstSurrogate) << 10) + (low - kFirstLowSurrogate);
}

/// The private-use area of the Basic Multilingual Plane, and planes 15 and 16.
[[nodiscard]] constexpr bool isPrivateUse(char32_t c) {
    return (c >= 0xE000 && c <= 0xF8FF) || (c >= 0xF0000 && c <= kLastCodePoint);
}

/// Code points that are never characters: the last two of each plane, and U+FDD0 to U+FDEF.
[[nodiscard]] constexpr bool isNoncharacter(char32_t c) {
    return (c & 0xFFFE) == 0xFFFE || (c >= 0xFDD0 && c <= 0xFDEF);
}

/// Whether a code point has the same meaning for everybody: it is neither private use, nor a surrogate, nor a
/// noncharacter, nor beyond the last code point.
[[nodiscard]] constexpr bool isInterchangeable(char32_t c) {
    return c <= kLastCodePoint && !isSurrogate(c) && !isPrivateUse(c) && !isNoncharacter(c);
}

} // namespace quillow::text
