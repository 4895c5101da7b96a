#include "engines/pdf/layout/PlainLine.h"

#include "engines/pdf/layout/Accents.h"
#include "engines/pdf/layout/Letter.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace quillow::pdf {

namespace {

/// Whether a character is written as it is, wherever it is in a line from the left.
constexpr bool isPlain(char32_t c) {
    if (c < kFirstRightToLeft) return c != kSoftHyphen;
    return isIn(c, 0x0900, 0x1FFF) || isIn(c, 0x2010, kFirstPresentationForm - 1);
}

bool isPunctuation(char32_t c) {
    return std::u32string_view(U".,:;!?").find(c) != std::u32string_view::npos;
}

/// The text of a page from one of its glyphs on.
std::uint32_t textBegin(const Page& page, std::size_t glyph) {
    return glyph < page.glyphs.size() ? page.glyphs[glyph].text : static_cast<std::uint32_t>(page.text.size());
}

} // namespace

/// Makes room for the characters of the spans and the gaps between them.
void PlainLineWriter::makeRoom(std::span<const std::uint32_t> spans) {
    std::size_t room = 0;
    for (const std::uint32_t index : spans) {
        const Span& span = orientation_.spans[index];
        room += textBegin(page_, std::size_t{span.firstGlyph} + span.glyphCount) - textBegin(page_, span.firstGlyph);
    }
    if (characters_.size() >= room) return;
    characters_.resize(2 * room);
    gaps_.resize(2 * room);
    places_.resize(2 * room);
}

/// Adds the letters of a span. Returns false if one of them is not plain.
bool PlainLineWriter::addSpan(const Span& span, Pen& pen) {
    const char32_t* const text = page_.text.data();
    const float size = span.size;
    const std::size_t end = std::size_t{span.firstGlyph} + span.glyphCount;
    std::uint32_t next = textBegin(page_, span.firstGlyph);
    for (std::size_t i = span.firstGlyph; i < end; ++i) {
        const Glyph& glyph = page_.glyphs[i];
        const std::uint32_t begin = next;
        next = textBegin(page_, i + 1);
        if (begin == next) return false;
        const char32_t first = text[begin];
        const float left = span.start + glyph.offset;
        const float right = left + glyph.width;
        const bool isInOrder = left >= pen.left && left >= pen.right - kOverlap * size;
        if (!isInOrder || !isPlain(first)) return false;
        if (next - begin == 1 && isBlankCharacter(first)) {
            if (right < left) return false;
            if (right - left > drawnBlank_ * size) drawnBlank_ = (right - left) / size;
            pen.isBehindBlank = true;
            pen.left = left;
            pen.right = right;
            continue;
        }
        if (!(right > left)) return false; // a mark
        if (pen.letterEnd != 0) {
            const float gap = left - pen.letterRight;
            if (gap < -kKerned * size && (isAccent(first) || isAccent(pen.letterEnd))) return false;
            if (pen.isBehindBlank) {
                if (gap <= kLeastBlank * size) return false;
                characters_[characterCount_++] = U' ';
            } else {
                const float width = gap / std::max(size, pen.letterSize);
                mayHaveGaps_ = mayHaveGaps_ || width >= kNoBlank;
                gaps_[gapCount_] = {width, isAlphabetic(pen.letterEnd) && isAlphabetic(first)};
                places_[gapCount_++] = static_cast<std::uint32_t>(characterCount_);
            }
        } else if (isPunctuation(first)) {
            return false; // a line from the right may begin so
        }
        characters_[characterCount_++] = first;
        for (std::uint32_t k = begin + 1; k < next; ++k) {
            if (!isPlain(text[k])) return false;
            characters_[characterCount_++] = text[k];
        }
        pen = {left, right, right, size, text[next - 1], false};
    }
    return true;
}

void PlainLineWriter::appendWithBlanks(std::u32string& out) {
    const float threshold = blankThreshold(std::span(gaps_).first(gapCount_), drawnBlank_);
    std::size_t done = 0;
    for (std::size_t i = 0; i < gapCount_; ++i) {
        if (gaps_[i].width <= threshold) continue;
        const std::size_t place = places_[i];
        if (isSetSolid(characters_[place - 1]) && isSetSolid(characters_[place])) continue;
        out.append(characters_.data() + done, place - done);
        out.push_back(U' ');
        done = place;
    }
    out.append(characters_.data() + done, characterCount_ - done);
}

bool PlainLineWriter::append(std::span<const std::uint32_t> spans, std::u32string& out) {
    makeRoom(spans);
    characterCount_ = 0;
    gapCount_ = 0;
    drawnBlank_ = 0;
    mayHaveGaps_ = false;
    constexpr float kFar = std::numeric_limits<float>::lowest();
    Pen pen{kFar, kFar};
    const auto isAnnotation = [this](std::uint32_t span) {
        return (page_.runs[orientation_.spans[span].run].flags & kFromAnnotation) != 0;
    };
    for (const std::uint32_t index : spans) {
        if (isAnnotation(index) != isAnnotation(spans.front())) return false;
        if (!addSpan(orientation_.spans[index], pen)) return false;
    }
    if (characterCount_ == 0) return true;
    if (characters_[0] == kNoBreakSpace || characters_[characterCount_ - 1] == kNoBreakSpace) return false;
    if (mayHaveGaps_)
        appendWithBlanks(out);
    else
        out.append(characters_.data(), characterCount_);
    return true;
}

} // namespace quillow::pdf
