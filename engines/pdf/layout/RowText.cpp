#include "engines/pdf/layout/RowText.h"

#include <algorithm>

namespace quillow::pdf {

namespace {

constexpr bool isIn(char32_t c, char32_t first, char32_t last) {
    return c >= first && c <= last;
}

constexpr bool isDigit(char32_t c) {
    return isIn(c, '0', '9');
}

/// Latin Extended A and B, Cyrillic and others, where capitals and small letters take turns: the even ones are capitals
/// but for three ranges.
constexpr bool isSmallOfPair(char32_t c) {
    const bool isOdd = (c & 1U) != 0;
    if (isIn(c, 0x139, 0x148) || isIn(c, 0x179, 0x17E) || isIn(c, 0x4C1, 0x4CE)) return !isOdd;
    return isOdd;
}

constexpr bool isLatinLetter(char32_t c) {
    return isIn(c | 0x20U, 'a', 'z');
}

constexpr bool isClosing(char32_t c) {
    return !isLatinLetter(c) && std::u32string_view(U"\"')]}»”’›」』）】〉》").find(c) != std::u32string_view::npos;
}

constexpr bool isSentenceEnd(char32_t c) {
    return !isLatinLetter(c) && std::u32string_view(U".!?:;…。．！？：؟۔।॥։").find(c) != std::u32string_view::npos;
}

constexpr bool isOpening(char32_t c) {
    return std::u32string_view(U"\"'([{«“‘‹„‚「『（【〈《¿¡").find(c) != std::u32string_view::npos;
}

constexpr bool isBullet(char32_t c) {
    return !isLatinLetter(c) && std::u32string_view(U"•‣◦▪▫●○■□◆◇►▶➢➤✓✔✗❖·∙–—-*").find(c) != std::u32string_view::npos;
}

} // namespace

bool isSetSolid(char32_t c) {
    if (c < 0x0E00) return false;
    return isIn(c, 0x0E00, 0x0EFF) || isIn(c, 0x1000, 0x109F) || isIn(c, 0x1780, 0x17FF) || isIn(c, 0x3000, 0x30FF) ||
           isIn(c, 0x3400, 0x4DBF) || isIn(c, 0x4E00, 0x9FFF) || isIn(c, 0xF900, 0xFAFF) || isIn(c, 0xFF01, 0xFF60) ||
           isIn(c, 0x20000, 0x3FFFF);
}

bool isIdeograph(char32_t c) {
    return c >= 0x3000 && isSetSolid(c);
}

bool isSmallLetter(char32_t c) {
    if (c < 0x80) return isIn(c, 'a', 'z');
    if (c < 0x100) return c >= 0xDF && c != 0xF7;
    if (c < 0x250) return isSmallOfPair(c);
    if (c < 0x2B0) return true; // phonetic signs
    if (isIn(c, 0x3AC, 0x3CE) || c == 0x390) return true;
    if (isIn(c, 0x430, 0x45F)) return true;
    if (isIn(c, 0x460, 0x52F)) return isSmallOfPair(c);
    if (isIn(c, 0x561, 0x587)) return true;
    if (isIn(c, 0x1E00, 0x1EFF)) return isSmallOfPair(c);
    if (isIn(c, 0x1F00, 0x1FFF)) return (c & 8U) == 0;
    return false;
}

bool isLetterOrDigit(char32_t c) {
    if (c < 0x80) return isDigit(c) || isIn(c | 0x20U, 'a', 'z');
    return c >= 0xC0 && c != 0xD7 && c != 0xF7 && !isIn(c, 0x2000, 0x2BFF) && !isIn(c, 0x3000, 0x303F);
}

bool endsSentence(std::u32string_view text) {
    while (!text.empty() && (isClosing(text.back()) || text.back() == ' '))
        text.remove_suffix(1);
    return !text.empty() && isSentenceEnd(text.back());
}

bool beginsSentence(std::u32string_view text) {
    while (!text.empty() && isOpening(text.front()))
        text.remove_prefix(1);
    return !text.empty() && isLetterOrDigit(text.front()) && !isSmallLetter(text.front());
}

std::size_t lengthOfFirstWord(std::u32string_view text) {
    constexpr std::size_t kLongestWord = 64;
    const std::size_t end = std::min(text.size(), kLongestWord);
    std::size_t length = 0;
    while (length < end && text[length] != ' ' && !isSetSolid(text[length]))
        ++length;
    if (length > 0 || end == 0) return length;
    // Words of these scripts are not known: a few letters of Thai and its like, one ideograph and a sign that may not
    // begin a line behind it.
    constexpr std::size_t kWordWithoutBlanks = 6;
    constexpr std::size_t kIdeographs = 2;
    return std::min(end, isIdeograph(text[0]) ? kIdeographs : kWordWithoutBlanks);
}

ListSign listSignOf(std::u32string_view text) {
    if (text.size() < 2) return ListSign::none;
    if (isBullet(text[0])) return text[1] == ' ' ? ListSign::bullet : ListSign::none;
    const std::size_t begin = text[0] == '(' || text[0] == '[' ? 1 : 0;
    constexpr std::size_t kMostDigits = 3;
    constexpr std::size_t kMostNumerals = 4;
    std::size_t end = begin;
    while (end < text.size() && end - begin < kMostDigits && isDigit(text[end]))
        ++end;
    if (end == begin) {
        const auto isNumeral = [](char32_t c) { return c == 'i' || c == 'v' || c == 'x'; };
        while (end < text.size() && end - begin < kMostNumerals && isNumeral(text[end]))
            ++end;
        if (end == begin && isIn(text[end] | 0x20U, 'a', 'z')) ++end;
    }
    if (end == begin || end + 1 >= text.size()) return ListSign::none;
    const char32_t close = text[end];
    const bool isClosed = begin == 1 ? close == (text[0] == '(' ? U')' : U']') : close == ')' || close == '.';
    return isClosed && text[end + 1] == ' ' ? ListSign::number : ListSign::none;
}

} // namespace quillow::pdf
