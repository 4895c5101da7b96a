#include "engines/pdf/layout/PlainLine.h"

#include "engines/pdf/layout/Accents.h"
#include "engines/pdf/layout/Letter.h"

#include <algorithm>

namespace quillow::pdf {

namespace {

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
    gapWidths_.resize(2 * room);
    gapsAreBetweenLetters_.resize(2 * room);
    places_.resize(2 * room);
}

/// Adds the letters of a span. Without `notesGaps`, gaps that may be blanks end the work.
template <bool notesGaps>
PlainLineWriter::Outcome PlainLineWriter::addSpan(const Span& span, Pen& pen) {
    const LetterFacts& facts = span.letters;
    if (!facts.isPlain || (!notesGaps && facts.hasGaps)) return addGlyphs<notesGaps>(span, span.glyphCount, pen);
    // The first letter is compared with what is before it.
    const bool beginsWithBlank = page_.text[textBegin(page_, span.firstGlyph)] == U' ';
    const std::size_t first = std::min<std::size_t>(span.glyphCount, beginsWithBlank ? 2 : 1);
    const Outcome outcome = addGlyphs<notesGaps>(span, first, pen);
    if (outcome != Outcome::added || first == span.glyphCount) return outcome;
    if constexpr (notesGaps) addGaps(span, first, pen);
    addPlain(span, first, pen);
    return Outcome::added;
}

/// Adds the letters of a plain span from one on that is behind a letter.
void PlainLineWriter::addPlain(const Span& span, std::size_t first, Pen& pen) {
    const Glyph* const glyphs = page_.glyphs.data() + span.firstGlyph;
    const auto leftOf = [&](std::size_t i) { return span.start + glyphs[i].offset; };
    const auto rightOf = [&](std::size_t i) { return leftOf(i) + glyphs[i].width; };
    const char32_t* const text = page_.text.data() + glyphs->text;
    const std::size_t last = span.glyphCount - 1;
    pen.isBehindBlank = text[last] == U' ';
    const std::size_t end = last + (pen.isBehindBlank ? 0 : 1);
    pen.character = std::copy(text + first, text + end, pen.character);
    pen.left = leftOf(last);
    pen.right = rightOf(last);
    pen.letterRight = rightOf(end - 1);
    pen.letterSize = span.size;
}

/// Notes the gaps of a plain span, before it is added: that before its glyph `first`, and those behind.
void PlainLineWriter::addGaps(const Span& span, std::size_t first, Pen& pen) {
    const Glyph* const glyphs = page_.glyphs.data() + span.firstGlyph;
    const char32_t* const text = page_.text.data() + glyphs->text;
    float* const widths = gapWidths_.data();
    std::uint8_t* const areBetweenLetters = gapsAreBetweenLetters_.data();
    std::uint32_t* const places = places_.data();
    auto place = static_cast<std::uint32_t>(pen.character - characters_.data());
    std::size_t gap = pen.gap;
    float right = pen.right;
    float widestBlank = 0;
    bool isBehindBlank = false;
    bool isBehindLetter = isAlphabetic(text[first - 1]);
    for (std::size_t i = first; i < span.glyphCount; ++i, ++place) {
        const Glyph& glyph = glyphs[i];
        const float left = span.start + glyph.offset;
        const bool isBlank = text[i] == U' ';
        const bool isLetter = isAlphabetic(text[i]);
        widths[gap] = (left - right) / span.size;
        areBetweenLetters[gap] = isBehindLetter && isLetter ? 1 : 0;
        places[gap] = place;
        gap += isBlank || isBehindBlank ? 0 : 1;
        right = left + glyph.width;
        if (isBlank) widestBlank = std::max(widestBlank, right - left);
        isBehindBlank = isBlank;
        isBehindLetter = isLetter;
    }
    pen.gap = gap;
    pen.mayHaveGaps = pen.mayHaveGaps || span.letters.hasGaps;
    if (widestBlank > pen.drawnBlank * span.size) pen.drawnBlank = widestBlank / span.size;
}

/// Adds the first letters of a span.
template <bool notesGaps>
PlainLineWriter::Outcome PlainLineWriter::addGlyphs(const Span& span, std::size_t count, Pen& before) {
    Pen pen = before;
    const char32_t* const text = page_.text.data();
    const char32_t* const lineBegin = characters_.data();
    const std::span glyphs = std::span(page_.glyphs).subspan(span.firstGlyph, count);
    const std::uint32_t textEnd = textBegin(page_, span.firstGlyph + count);
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
                gapWidths_[pen.gap] = width;
                gapsAreBetweenLetters_[pen.gap] = isAlphabetic(last) && isAlphabetic(first) ? 1 : 0;
                places_[pen.gap] = static_cast<std::uint32_t>(pen.character - lineBegin);
                ++pen.gap;
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
    for (const std::uint32_t index : spans)
        if (const Outcome outcome = addSpan<notesGaps>(orientation_.spans[index], pen); outcome != Outcome::added)
            return outcome;
    return Outcome::added;
}

void PlainLineWriter::appendWithBlanks(const Pen& pen, std::u32string& out) {
    const std::span widths = std::span(gapWidths_).first(pen.gap);
    const float threshold = blankThreshold({widths, std::span(gapsAreBetweenLetters_).first(pen.gap)}, pen.drawnBlank);
    const char32_t* done = characters_.data();
    for (std::size_t i = 0; i < widths.size(); ++i) {
        if (widths[i] <= threshold) continue;
        const char32_t* const place = characters_.data() + places_[i];
        if (!isBlankInScripts(place[-1], place[0], widths[i])) continue;
        out.append(done, place);
        out.push_back(U' ');
        done = place;
    }
    out.append(done, static_cast<const char32_t*>(pen.character));
}

/// Whether a line is likely to have gaps that may be blanks, as far as is known before it is written.
bool PlainLineWriter::mayHaveGaps(std::span<const std::uint32_t> spans) const {
    bool arePlain = true;
    for (const std::uint32_t index : spans) {
        const LetterFacts& facts = orientation_.spans[index].letters;
        if (facts.isPlain && facts.hasGaps) return true;
        arePlain = arePlain && facts.isPlain;
    }
    return hadGaps_ && !arePlain;
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
    if (!mayHaveGaps(spans)) outcome = addLine<false>(spans, pen);
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
