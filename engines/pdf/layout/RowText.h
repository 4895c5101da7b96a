// What the letters at the ends of a row say about paragraphs.
#pragma once

#include <cstddef>
#include <string_view>

namespace quillow::pdf {

/// Scripts that are written without blanks between words: Han, Kana, Thai, Lao, Khmer, Burmese. Not Hangul.
[[nodiscard]] bool isSetSolid(char32_t c);

/// Those of them that are as wide as high.
[[nodiscard]] bool isIdeograph(char32_t c);

[[nodiscard]] bool isSmallLetter(char32_t c);
[[nodiscard]] bool isLetterOrDigit(char32_t c);

/// Whether text ends as a sentence does, quotes and brackets behind it aside.
[[nodiscard]] bool endsSentence(std::u32string_view text);

/// Whether text begins as a sentence does: with a capital, a digit, or a letter of a script without capitals.
[[nodiscard]] bool beginsSentence(std::u32string_view text);

/// How many letters text begins with that can not be separated by a line end.
[[nodiscard]] std::size_t lengthOfFirstWord(std::u32string_view text);

enum class ListSign { none, bullet, number };

/// The sign that text of a list item begins with: a bullet or dash, or "1.", "(a)", "iv)".
[[nodiscard]] ListSign listSignOf(std::u32string_view text);

} // namespace quillow::pdf
