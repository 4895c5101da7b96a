// Ideographs for CJK radicals. Fonts draw both with the same glyph, and producers that invert the font's character map
// find the radical first, because its code point is lower: nearly every radical in a PDF file is meant as an ideograph.
#pragma once

namespace quillow::pdf {

inline constexpr char32_t kFirstRadical = 0x2E80;
inline constexpr char32_t kLastRadical = 0x2FD5;
extern const char32_t kIdeographsOfRadicals[kLastRadical - kFirstRadical + 1]; ///< 0 if there is none

/// The ideograph that looks the same (Unicode property Equivalent_Unified_Ideograph); other characters stay.
[[nodiscard]] inline char32_t withoutRadical(char32_t c) {
    if (c < kFirstRadical || c > kLastRadical) return c;
    const char32_t ideograph = kIdeographsOfRadicals[c - kFirstRadical];
    return ideograph != 0 ? ideograph : c;
}

} // namespace quillow::pdf
