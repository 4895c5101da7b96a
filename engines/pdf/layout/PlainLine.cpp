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

/// Adds the letters of a span. Without `notesGaps`, gaps that may be blanks end the work.
template <bool notesGaps>
PlainLineWriter::Outcome PlainLineWriter::addSpan(const Span& span, Pen& before) {
    Pen pen = before;
    const char32_t* const text = page_.text.data();
    const char32_t* const lineBegin = characters_.data();
    const std::span glyphs = std::span(page_.glyphs).subspan(span.firstGlyph, span.glyphCount);
    const std::uint32_t textEnd = textBegin(page_, std::size_t{span.firstGlyph} + span.glyphCount);
    const float size = span.size;
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        const std::uint32_t begin = glyphs[i].text;
        const std::uint32_t end = i + 1 < glyphs.size() ? glyphs[i + 1].text : textEnd;
        if (begin == end) return Outcome::notPlain;
        const char32_t first = text[begin];
        const float left = span.start + glyphs[i].offset;
        const float right = left + glyphs[i].width;
        const bool isInOrder = left >= pen.left && left >= pen.right - kOverlap * size;
        if (!isInOrder || !isPlain(first)) return Outcome::notPlain;
        pen.left = left;
        pen.right = right;
        if (end - begin == 1 && isBlankCharacter(first)) {
            if (right < left) return Outcome::notPlain;
            if (right - left > pen.drawnBlank * size) pen.drawnBlank = (right - left) / size;
            pen.isBehindBlank = true;
            continue;
        }
        if (!(right > left)) return Outcome::notPlain; // a mark
        if (pen.character != lineBegin) {
            const float gap = left - pen.letterRight;
            const char32_t last = pen.character[-1];
            if (gap < -kKerned * size && (isAccent(first) || isAccent(last))) return Outcome::notPlain;
            const float larger = std::max(size, pen.letterSize);
            if (pen.isBehindBlank) {
                if (gap <= kLeastBlank * size) return Outcome::notPlain;
                *pen.character++ = U' ';
            } else if constexpr (notesGaps) {
                const float width = gap / larger;
                pen.mayHaveGaps = pen.mayHaveGaps || width >= kNoBlank;
                *pen.gap++ = {width, isAlphabetic(last) && isAlphabetic(first)};
                *pen.place++ = static_cast<std::uint32_t>(pen.character - lineBegin);
            } else if (gap >= kNoBlank * larger) {
                return Outcome::hasGap;
            }
        }
        *pen.character++ = first;
        for (std::uint32_t k = begin + 1; k < end; ++k) {
            if (!isPlain(text[k])) return Outcome::notPlain;
            *pen.character++ = text[k];
        }
        pen.letterRight = right;
        pen.letterSize = size;
        pen.isBehindBlank = false;
    }
    before = pen;
    return Outcome::added;
}

template <bool notesGaps>
PlainLineWriter::Outcome PlainLineWriter::addLine(std::span<const std::uint32_t> spans, Pen& pen) {
    pen.character = characters_.data();
    pen.gap = gaps_.data();
    pen.place = places_.data();
    for (const std::uint32_t index : spans)
        if (const Outcome outcome = addSpan<notesGaps>(orientation_.spans[index], pen); outcome != Outcome::added)
            return outcome;
    return Outcome::added;
}

void PlainLineWriter::appendWithBlanks(const Pen& pen, std::u32string& out) {
    const std::span gaps = std::span(gaps_).first(static_cast<std::size_t>(pen.gap - gaps_.data()));
    const float threshold = blankThreshold(gaps, pen.drawnBlank);
    const char32_t* done = characters_.data();
    for (std::size_t i = 0; i < gaps.size(); ++i) {
        if (gaps[i].width <= threshold) continue;
        const char32_t* const place = characters_.data() + places_[i];
        if (!isBlankInScripts(place[-1], place[0], gaps[i].width)) continue;
        out.append(done, place);
        out.push_back(U' ');
        done = place;
    }
    out.append(done, static_cast<const char32_t*>(pen.character));
}

bool PlainLineWriter::append(std::span<const std::uint32_t> spans, std::u32string& out) {
    const auto isAnnotation = [this](std::uint32_t span) {
        return (page_.runs[orientation_.spans[span].run].flags & kFromAnnotation) != 0;
    };
    for (const std::uint32_t span : spans)
        if (isAnnotation(span) != isAnnotation(spans.front())) return false;
    makeRoom(spans);
    Pen pen;
    Outcome outcome = Outcome::hasGap;
    if (!hadGaps_) outcome = addLine<false>(spans, pen);
    if (outcome == Outcome::hasGap) {
        pen = {};
        outcome = addLine<true>(spans, pen);
    }
    if (outcome != Outcome::added) return false;
    hadGaps_ = pen.mayHaveGaps;
    if (pen.character == characters_.data()) return true;
    if (characters_.front() == kNoBreakSpace || pen.character[-1] == kNoBreakSpace) return false;
    if (pen.mayHaveGaps)
        appendWithBlanks(pen, out);
    else
        out.append(characters_.data(), pen.character);
    return true;
}

} // namespace quillow::pdf
