// What is known of single letters of a line and the gaps between them. Shared by the writers of lines.
#pragma once

namespace quillow::pdf {

/// A drawn blank between letters nearer than this is not seen. In ems.
inline constexpr float kLeastBlank = 0.04F;
/// Gaps below this are not blanks in any line. In ems.
inline constexpr float kNoBlank = 0.05F;
/// Letters overlap by kerning and by accents; by more, something is drawn twice or over something else. In ems.
inline constexpr float kOverlap = 0.2F;
/// Kerning leaves gaps below this inside a cluster of glyphs. In ems.
inline constexpr float kKerned = 0.1F;
inline constexpr char32_t kFirstRightToLeft = 0x0590;
inline constexpr char32_t kFirstPresentationForm = 0xFB00;
inline constexpr char32_t kSoftHyphen = 0x00AD;
inline constexpr char32_t kNoBreakSpace = 0x00A0;

[[nodiscard]] constexpr bool isIn(char32_t c, char32_t first, char32_t last) {
    return c >= first && c <= last;
}

[[nodiscard]] constexpr bool isBlankCharacter(char32_t c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == 0x3000 || isIn(c, 0x2000, 0x200B);
}

/// Roughly the letters: what is neither punctuation, digit, nor symbol.
[[nodiscard]] constexpr bool isAlphabetic(char32_t c) {
    if (c < 0x80) return isIn(c | 0x20U, 'a', 'z');
    return c >= 0xC0 && c != 0xD7 && c != 0xF7 && !isIn(c, 0x2000, 0x2BFF) && !isIn(c, 0x3000, 0x303F);
}

/// Scripts without blanks between words: gaps inside them are justification.
[[nodiscard]] constexpr bool isSetSolid(char32_t c) {
    return isIn(c, 0x0E00, 0x0EFF) || isIn(c, 0x1000, 0x109F) || isIn(c, 0x1780, 0x17FF) || isIn(c, 0x3001, 0x30FF) ||
           isIn(c, 0x3400, 0x4DBF) || isIn(c, 0x4E00, 0x9FFF) || isIn(c, 0xF900, 0xFAFF) || isIn(c, 0xFF01, 0xFF60) ||
           isIn(c, 0x20000, 0x3FFFF);
}

/// The punctuation that ends a line or a part of it.
[[nodiscard]] constexpr bool isEndPunctuation(char32_t c) {
    return c == '.' || c == ',' || c == ':' || c == ';' || c == '!' || c == '?';
}

} // namespace quillow::pdf
