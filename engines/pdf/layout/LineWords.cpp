#include "engines/pdf/layout/LineWords.h"

#include <algorithm>

namespace quillow::pdf {

namespace {

/// Gaps between words are wider. In ems; narrower ones need a drawn blank.
constexpr float kWordGap = 0.15F;
/// Blanks of text are narrower, in fonts whose letters have widths of their own: a blank is 0.2 to 0.35 em, and lines
/// that are justified with more have gaps that are not below one another. In ems.
constexpr float kPieceGap = 0.45F;
/// In typewriter fonts, one blank and a half. In letters.
constexpr float kPieceGapInLetters = 1.6F;
/// Widths that differ by less are equal. In ems.
constexpr float kSameWidth = 0.02F;
/// Digits have one width in most fonts, and are narrower than a typewriter's. In ems.
constexpr float kWidestDigit = 0.58F;

/// A page draws blanks if so many of its characters are. Text has 12 to 20 %, pages of numbers about 6 %; producers
/// that move instead draw hardly any.
constexpr float kBlankShare = 0.04F;

constexpr bool isBlank(char32_t c) {
    return c <= ' ' || c == 0xA0 || c == 0x3000 || (c >= 0x2000 && c <= 0x200F);
}

void count(Word& word, char32_t c) {
    ++word.characters;
    if (isDigitLike(c)) {
        ++word.digits;
    } else if (isLetterLike(c)) {
        ++word.letters;
    }
}

Line partOf(const Orientation& orientation, Lines& found, std::span<const std::uint32_t> spans) {
    Line part;
    part.firstSpan = static_cast<std::uint32_t>(found.spans.size());
    part.spanCount = static_cast<std::uint32_t>(spans.size());
    found.spans.insert(found.spans.end(), spans.begin(), spans.end());
    const Span& first = orientation.spans[spans.front()];
    part.left = first.left;
    part.right = first.right;
    for (const std::uint32_t index : spans) {
        const Span& span = orientation.spans[index];
        part.left = std::min(part.left, span.left);
        part.right = std::max(part.right, span.right);
        if (span.size <= part.size) continue;
        part.size = span.size;
        part.baseline = span.baseline;
        part.bottom = span.bottom;
        part.top = span.top;
    }
    return part;
}

} // namespace

bool isDigitLike(char32_t c) {
    return (c >= '0' && c <= '9') || (c >= 0x0660 && c <= 0x0669) || (c >= 0x06F0 && c <= 0x06F9);
}

bool isLetterLike(char32_t c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           (c >= 0xAA && c != 0xB7 && c != 0xD7 && c != 0xF7 && c < 0x2000) || c >= 0x2E80;
}

Word countsOf(std::u32string_view text) {
    Word word;
    for (const char32_t c : text)
        if (!isBlank(c)) count(word, c);
    return word;
}

void Word::append(const Word& next) {
    right = std::max(right, next.right);
    characters += next.characters;
    digits += next.digits;
    letters += next.letters;
}

bool Word::isNumeric() const {
    constexpr std::size_t kLongestSign = 3;
    return digits > letters || (letters == 0 && characters <= kLongestSign);
}

bool LineWords::drawsBlanks() {
    if (!drawsBlanks_)
        drawsBlanks_ = static_cast<float>(std::count(page_.text.begin(), page_.text.end(), U' ')) >
                       kBlankShare * static_cast<float>(page_.text.size());
    return *drawsBlanks_;
}

std::span<const Word> LineWords::of(std::uint32_t line) {
    const float size = found_.lines[line].size;
    words_.clear();
    letters_.clear();
    bool inOrder = true;
    float narrowest = size;
    float widest = 0;
    bool isAfterBlank = false;
    for (const std::uint32_t index : found_.spansOf(found_.lines[line])) {
        const Span& span = orientation_.spans[index];
        for (std::uint32_t i = span.firstGlyph; i < span.firstGlyph + span.glyphCount; ++i) {
            const Glyph& glyph = page_.glyphs[i];
            const std::size_t end = i + 1 < page_.glyphs.size() ? page_.glyphs[i + 1].text : page_.text.size();
            if (end == glyph.text) continue;
            if (isBlank(page_.text[glyph.text])) {
                isAfterBlank = true;
                continue;
            }
            Letter letter{span.start + glyph.offset, span.start + glyph.offset + glyph.width, page_.text[glyph.text],
                          isAfterBlank};
            isAfterBlank = false;
            if (letter.right < letter.left) std::swap(letter.left, letter.right);
            inOrder = inOrder && (letters_.empty() || letter.left >= letters_.back().left);
            narrowest = std::min(narrowest, letter.right - letter.left);
            widest = std::max(widest, letter.right - letter.left);
            letters_.push_back(letter);
        }
    }
    if (!inOrder)
        std::stable_sort(letters_.begin(), letters_.end(),
                         [](const Letter& a, const Letter& b) { return a.left < b.left; });
    std::size_t wordLetters = 0;
    for (const Letter& letter : letters_) {
        if (words_.empty() || letter.left - words_.back().right > kWordGap * size)
            words_.push_back({letter.left, letter.right, 0, 0, 0, letter.isAfterBlank});
        words_.back().right = std::max(words_.back().right, letter.right);
        count(words_.back(), letter.character);
        wordLetters += isLetterLike(letter.character) ? 1 : 0;
    }
    constexpr std::size_t kLeastLetters = 4;
    const bool isTypewriter =
        widest - narrowest < kSameWidth * size && (wordLetters >= kLeastLetters || widest > kWidestDigit * size);
    pieceGap_ = std::max(kPieceGap * size, isTypewriter ? kPieceGapInLetters * widest : 0.0F);
    return words_;
}

void LineWords::appendPieces(std::uint32_t line, std::vector<Word>& out) {
    const std::size_t first = out.size();
    const bool blanksAreDrawn = drawsBlanks();
    Word before;
    for (const Word& word : of(line)) {
        const bool isApart = (blanksAreDrawn && !word.isAfterBlank) || (before.isGrouped() && word.isGrouped());
        if (out.size() == first || isApart || word.left - out.back().right > pieceGap_)
            out.push_back(word);
        else
            out.back().append(word);
        before = word;
    }
}

std::vector<Line> cutLine(const Page& page, Orientation& orientation, Lines& found, std::uint32_t line,
                          std::span<const float> cuts) {
    std::vector<std::vector<std::uint32_t>> spans(cuts.size() + 1); // of each part
    for (const std::uint32_t index : found.spansOf(found.lines[line])) {
        const Span whole = orientation.spans[index];
        std::size_t current = spans.size();
        for (std::uint32_t i = whole.firstGlyph; i < whole.firstGlyph + whole.glyphCount; ++i) {
            const Glyph& glyph = page.glyphs[i];
            const float begin = whole.start + std::min(glyph.offset, glyph.offset + glyph.width);
            const float end = whole.start + std::max(glyph.offset, glyph.offset + glyph.width);
            const auto part =
                static_cast<std::size_t>(std::upper_bound(cuts.begin(), cuts.end(), (begin + end) / 2) - cuts.begin());
            if (part != current) {
                current = part;
                Span span = whole;
                span.firstGlyph = i;
                span.glyphCount = 0;
                span.left = begin;
                span.right = end;
                spans[part].push_back(static_cast<std::uint32_t>(orientation.spans.size()));
                orientation.spans.push_back(span);
            }
            Span& span = orientation.spans.back();
            ++span.glyphCount;
            span.left = std::min(span.left, begin);
            span.right = std::max(span.right, end);
        }
    }
    std::vector<Line> parts;
    for (const std::vector<std::uint32_t>& members : spans)
        if (!members.empty()) parts.push_back(partOf(orientation, found, members));
    return parts;
}

} // namespace quillow::pdf
