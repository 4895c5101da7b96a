#include "engines/pdf/layout/PlainLine.h"

#include "engines/pdf/layout/Accents.h"
#include "engines/pdf/layout/Letter.h"

#include <algorithm>

namespace quillow::pdf {

namespace {

/// Whether a character is written as it is, wherever it is in a line from the left.
constexpr bool isPlain(char32_t c) {
    if (c < kFirstRightToLeft) return c != kSoftHyphen;
    return isIn(c, 0x0900, 0x1FFF) || isIn(c, 0x2010, kFirstPresentationForm - 1);
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
bool PlainLineWriter::addSpan(const Span& span, Pen& before) {
    Pen pen = before;
    const char32_t* const text = page_.text.data();
    const std::span glyphs = std::span(page_.glyphs).subspan(span.firstGlyph, span.glyphCount);
    const std::uint32_t textEnd = textBegin(page_, std::size_t{span.firstGlyph} + span.glyphCount);
    const float size = span.size;
    const float overlap = kOverlap * size;
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        const std::uint32_t begin = glyphs[i].text;
        const std::uint32_t end = i + 1 < glyphs.size() ? glyphs[i + 1].text : textEnd;
        if (begin == end) return false;
        const char32_t first = text[begin];
        const float left = span.start + glyphs[i].offset;
        const float right = left + glyphs[i].width;
        const bool isInOrder = left >= pen.left && left >= pen.right - overlap;
        if (!isInOrder || !isPlain(first)) return false;
        if (end - begin == 1 && isBlankCharacter(first)) {
            if (right < left) return false;
            if (right - left > pen.drawnBlank * size) pen.drawnBlank = (right - left) / size;
            pen.isBehindBlank = true;
            pen.left = left;
            pen.right = right;
            continue;
        }
        if (!(right > left)) return false; // a mark
        const bool isLetter = isAlphabetic(first);
        if (pen.letterEnd != 0) {
            const float gap = left - pen.letterRight;
            if (gap < -kKerned * size && (isAccent(first) || isAccent(pen.letterEnd))) return false;
            if (pen.isBehindBlank) {
                if (gap <= kLeastBlank * size) return false;
                *pen.character++ = U' ';
            } else {
                const float width = gap / std::max(size, pen.letterSize);
                pen.mayHaveGaps = pen.mayHaveGaps || width >= kNoBlank;
                *pen.gap++ = {width, pen.isLetter && isLetter};
                *pen.place++ = static_cast<std::uint32_t>(pen.character - characters_.data());
            }
        }
        *pen.character++ = first;
        for (std::uint32_t k = begin + 1; k < end; ++k) {
            if (!isPlain(text[k])) return false;
            *pen.character++ = text[k];
        }
        pen.left = left;
        pen.right = right;
        pen.letterRight = right;
        pen.letterSize = size;
        pen.letterEnd = text[end - 1];
        pen.isLetter = end - begin == 1 ? isLetter : isAlphabetic(pen.letterEnd);
        pen.isBehindBlank = false;
    }
    before = pen;
    return true;
}

void PlainLineWriter::appendWithBlanks(const Pen& pen, std::u32string& out) {
    const std::span gaps(gaps_.data(), static_cast<std::size_t>(pen.gap - gaps_.data()));
    const float threshold = blankThreshold(gaps, pen.drawnBlank);
    const char32_t* done = characters_.data();
    for (std::size_t i = 0; i < gaps.size(); ++i) {
        if (gaps[i].width <= threshold) continue;
        const char32_t* const place = characters_.data() + places_[i];
        if (isSetSolid(place[-1]) && isSetSolid(place[0])) continue;
        out.append(done, place);
        out.push_back(U' ');
        done = place;
    }
    out.append(done, static_cast<const char32_t*>(pen.character));
}

bool PlainLineWriter::append(std::span<const std::uint32_t> spans, std::u32string& out) {
    makeRoom(spans);
    Pen pen;
    pen.character = characters_.data();
    pen.gap = gaps_.data();
    pen.place = places_.data();
    const auto isAnnotation = [this](std::uint32_t span) {
        return (page_.runs[orientation_.spans[span].run].flags & kFromAnnotation) != 0;
    };
    for (const std::uint32_t index : spans) {
        if (isAnnotation(index) != isAnnotation(spans.front())) return false;
        if (!addSpan(orientation_.spans[index], pen)) return false;
    }
    if (pen.character == characters_.data()) return true;
    if (characters_.front() == kNoBreakSpace || pen.character[-1] == kNoBreakSpace) return false;
    if (pen.mayHaveGaps)
        appendWithBlanks(pen, out);
    else
        out.append(characters_.data(), pen.character);
    return true;
}

} // namespace quillow::pdf
