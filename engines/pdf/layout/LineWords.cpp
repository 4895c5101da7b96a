#include "engines/pdf/layout/LineWords.h"

#include <algorithm>
#include <limits>

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

class LineWords::Builder {
public:
    Builder(std::vector<Word>& words, float size)
        : words_(words)
        , size_(size)
        , wordGap_(kWordGap * size)
        , narrowest_(size) {}

    void add(const Letter& letter) {
        if (!hasWord_ || letter.left - word_.right > wordGap_) {
            endWord();
            word_ = {letter.left, letter.right, 0, 0, 0, letter.isAfterBlank};
            hasWord_ = true;
        }
        word_.right = std::max(word_.right, letter.right);
        count(word_, letter.character);
        narrowest_ = std::min(narrowest_, letter.right - letter.left);
        widest_ = std::max(widest_, letter.right - letter.left);
    }

    /// Adds the last word. Returns the gap between pieces.
    float finish() {
        endWord();
        constexpr std::size_t kLeastLetters = 4;
        const bool isTypewriter =
            widest_ - narrowest_ < kSameWidth * size_ && (letters_ >= kLeastLetters || widest_ > kWidestDigit * size_);
        return std::max(kPieceGap * size_, isTypewriter ? kPieceGapInLetters * widest_ : 0.0F);
    }

private:
    void endWord() {
        if (!hasWord_) return;
        letters_ += word_.letters;
        words_.push_back(word_);
    }

    std::vector<Word>& words_;
    float size_;
    float wordGap_;
    float narrowest_;
    float widest_ = 0;
    std::size_t letters_ = 0;
    bool hasWord_ = false;
    Word word_;
};

/// Calls `use` with the letters of a line in content order, until it returns false.
template <class Use>
void LineWords::forEachLetter(std::uint32_t line, Use use) const {
    bool isAfterBlank = false;
    for (const std::uint32_t index : found_.spansOf(found_.lines[line])) {
        const Span& span = orientation_.spans[index];
        const Glyph* const glyphs = page_.glyphs.data() + span.firstGlyph;
        const std::size_t next = std::size_t{span.firstGlyph} + span.glyphCount;
        const std::size_t end = next < page_.glyphs.size() ? page_.glyphs[next].text : page_.text.size();
        for (std::uint32_t i = 0; i < span.glyphCount; ++i) {
            const Glyph& glyph = glyphs[i];
            if (glyph.text == (i + 1 < span.glyphCount ? glyphs[i + 1].text : end)) continue;
            const char32_t character = page_.text[glyph.text];
            if (isBlank(character)) {
                isAfterBlank = true;
                continue;
            }
            Letter letter{span.start + glyph.offset, span.start + glyph.offset + glyph.width, character, isAfterBlank};
            isAfterBlank = false;
            if (letter.right < letter.left) std::swap(letter.left, letter.right);
            if (!use(letter)) return;
        }
    }
}

/// Returns false if the letters are not drawn from left to right.
bool LineWords::addLetters(std::uint32_t line) {
    Builder builder(words_, found_.lines[line].size);
    bool inOrder = true;
    float left = std::numeric_limits<float>::lowest();
    forEachLetter(line, [&](const Letter& letter) {
        inOrder = letter.left >= left;
        left = letter.left;
        if (inOrder) builder.add(letter);
        return inOrder;
    });
    pieceGap_ = builder.finish();
    return inOrder;
}

void LineWords::addSortedLetters(std::uint32_t line) {
    letters_.clear();
    forEachLetter(line, [this](const Letter& letter) {
        letters_.push_back(letter);
        return true;
    });
    std::stable_sort(letters_.begin(), letters_.end(),
                     [](const Letter& a, const Letter& b) { return a.left < b.left; });
    Builder builder(words_, found_.lines[line].size);
    for (const Letter& letter : letters_)
        builder.add(letter);
    pieceGap_ = builder.finish();
}

std::span<const Word> LineWords::of(std::uint32_t line) {
    words_.clear();
    if (!addLetters(line)) {
        words_.clear();
        addSortedLetters(line);
    }
    return words_;
}

void LineWords::findPieces(std::uint32_t line) {
    const bool blanksAreDrawn = drawsBlanks();
    const std::size_t first = pieces_.size();
    const Word* before = nullptr;
    for (const Word& word : of(line)) {
        const bool isApart =
            (blanksAreDrawn && !word.isAfterBlank) || (before != nullptr && before->isGrouped() && word.isGrouped());
        if (before == nullptr || isApart || word.left - pieces_.back().right > pieceGap_)
            pieces_.push_back(word);
        else
            pieces_.back().append(word);
        before = &word;
    }
    if (piecesOf_.size() <= line) piecesOf_.resize(found_.lines.size());
    piecesOf_[line] = {static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(pieces_.size())};
}

void LineWords::appendPieces(std::uint32_t line, std::vector<Word>& out) {
    if (line >= piecesOf_.size() || piecesOf_[line].begin == Pieces::kUnknown) findPieces(line);
    const auto [begin, end] = piecesOf_[line];
    out.insert(out.end(), pieces_.begin() + begin, pieces_.begin() + end);
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
