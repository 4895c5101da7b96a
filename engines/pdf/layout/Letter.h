// The letters of a line: glyphs with their place, and what is between them.
#pragma once

#include "engines/pdf/content/Page.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace quillow::pdf {

/// A glyph with its place in the line.
struct Letter {
    float left = 0;
    float right = 0;
    float place = 0; ///< by which letters are sorted
    float size = 0;
    std::uint32_t textBegin = 0;
    std::uint32_t textEnd = 0;
    std::uint8_t rank = 0; ///< of a mark among those with the place of its letter
    bool isBlank = false;
    bool isFromAnnotation = false;
    bool isApart = false; ///< it begins a run that is kept whole behind one that it is drawn over

    [[nodiscard]] float middle() const { return (left + right) / 2; }
};

/// A drawn blank between letters nearer than this is not seen. In ems.
constexpr float kLeastBlank = 0.04F;
/// Gaps below this are not blanks in any line. In ems.
constexpr float kNoBlank = 0.05F;
/// Letters overlap by kerning and by accents; by more, something is drawn twice or over something else. In ems.
constexpr float kOverlap = 0.2F;
/// Kerning leaves gaps below this inside a cluster of glyphs. In ems.
constexpr float kKerned = 0.1F;

constexpr char32_t kFirstRightToLeft = 0x0590;
constexpr char32_t kFirstPresentationForm = 0xFB00;
constexpr char32_t kSoftHyphen = 0x00AD;
constexpr char32_t kNoBreakSpace = 0x00A0;

constexpr bool isIn(char32_t c, char32_t first, char32_t last) {
    return c >= first && c <= last;
}

constexpr bool isBlankCharacter(char32_t c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == 0x3000 || isIn(c, 0x2000, 0x200B);
}

/// Whether a character is written as it is, wherever it is in a line from the left.
constexpr bool isPlain(char32_t c) {
    if (c < kFirstRightToLeft) return c != kSoftHyphen;
    return isIn(c, 0x0900, 0x1FFF) || isIn(c, 0x2010, kFirstPresentationForm - 1);
}

/// ff, fi, fl and their like, which are written as their letters.
constexpr bool isLigature(char32_t c) {
    return isIn(c, 0xFB00, 0xFB06);
}

/// Roughly the letters: what is neither punctuation, digit, nor symbol.
constexpr bool isAlphabetic(char32_t c) {
    if (c < 0x80) return isIn(c | 0x20U, 'a', 'z');
    return c >= 0xC0 && c != 0xD7 && c != 0xF7 && !isIn(c, 0x2000, 0x2BFF) && !isIn(c, 0x3000, 0x303F);
}

/// Scripts without blanks between words: gaps inside them are justification.
constexpr bool isSetSolid(char32_t c) {
    return isIn(c, 0x0E00, 0x0EFF) || isIn(c, 0x1000, 0x109F) || isIn(c, 0x1780, 0x17FF) || isIn(c, 0x3001, 0x30FF) ||
           isIn(c, 0x3400, 0x4DBF) || isIn(c, 0x4E00, 0x9FFF) || isIn(c, 0xF900, 0xFAFF) || isIn(c, 0xFF01, 0xFF60) ||
           isIn(c, 0x20000, 0x3FFFF);
}

/// Typesetters leave a quarter of an em between ideographs or kana and letters or digits of other scripts; justified
/// lines stretch it. In ems.
constexpr float kBesideIdeographs = 0.3F;

/// Ideographs and kana with their punctuation, of the scripts that are set solid.
constexpr bool isIdeographic(char32_t c) {
    return c >= 0x3001 && isSetSolid(c);
}

constexpr bool isLetterOrDigit(char32_t c) {
    return isAlphabetic(c) || isIn(c, '0', '9');
}

/// Whether a wide gap between two characters, in ems, is a blank in their scripts.
constexpr bool isBlankInScripts(char32_t last, char32_t first, float gap) {
    if (isSetSolid(last) && isSetSolid(first)) return false;
    const bool mayBeGlue =
        (isIdeographic(last) && isLetterOrDigit(first)) || (isIdeographic(first) && isLetterOrDigit(last));
    return !mayBeGlue || gap > kBesideIdeographs;
}

/// Whether a gap between letters without a drawn blank is a blank. `threshold`: see `blankThreshold`.
[[nodiscard]] inline bool isBlankBetween(const Page& page, const Letter& before, const Letter& after, float threshold) {
    if (before.isFromAnnotation != after.isFromAnnotation) return true; // a field beside its label
    const float gap = after.left - before.right;
    const float size = std::max(before.size, after.size);
    if (gap <= threshold * size) return false;
    return isBlankInScripts(page.text[before.textEnd - 1], page.text[after.textBegin], gap / size);
}

/// Writes a presentation form as its letters, and other characters as they are.
void appendPlainLetters(char32_t character, std::u32string& out);

/// Writes the characters of a letter: presentation forms as their letters, soft hyphens as what is seen of them.
void appendLetter(const Page& page, const Letter& letter, std::u32string& out);

} // namespace quillow::pdf
