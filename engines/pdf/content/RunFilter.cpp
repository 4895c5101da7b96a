#include "engines/pdf/content/RunFilter.h"

#include <algorithm>

namespace quillow::pdf {

namespace {

bool overlaps(const Box& a, const Box& b) {
    return a.left <= b.right && b.left <= a.right && a.bottom <= b.top && b.bottom <= a.top;
}

bool contains(const Box& outer, const Box& inner) {
    return inner.left >= outer.left && inner.right <= outer.right && inner.bottom >= outer.bottom &&
           inner.top <= outer.top;
}

/// The place on the page that is `along` in the run's direction and `left` to the left of it.
Point placeIn(const Run& run, float along, float left) {
    return {run.origin.x + along * run.direction.x - left * run.direction.y,
            run.origin.y + along * run.direction.y + left * run.direction.x};
}

Box boxBetween(const Run& run, float first, float last) {
    const Point start = placeIn(run, first, run.ascent);
    Box box{start.x, start.y, start.x, start.y};
    box.extendTo(placeIn(run, first, -run.descent));
    box.extendTo(placeIn(run, last, run.ascent));
    box.extendTo(placeIn(run, last, -run.descent));
    return box;
}

/// False also for places that are not numbers.
bool isSeen(const Page& page, const Run& run, const Glyph& glyph, const Box& clip) {
    const Point middle = placeIn(run, glyph.offset + glyph.width / 2, (run.ascent - run.descent) / 2);
    return page.cropBox.contains(middle) && overlaps(boxBetween(run, glyph.offset, glyph.offset + glyph.width), clip);
}

/// Offsets count from the first glyph that is left.
void moveOrigin(Page& page, Run& run) {
    const float first = page.glyphs[run.firstGlyph].offset;
    run.origin = placeIn(run, first, 0);
    for (std::size_t i = run.firstGlyph; i < page.glyphs.size(); ++i)
        page.glyphs[i].offset -= first;
}

} // namespace

void dropUnseenGlyphs(Page& page, Run& run, const Box& clip) {
    if (run.glyphCount == 0) return;
    const Glyph& first = page.glyphs[run.firstGlyph];
    const Glyph& last = page.glyphs.back();
    const Box whole = boxBetween(run, std::min(first.offset, last.offset), last.offset + last.width);
    if (contains(page.cropBox, whole) && contains(clip, whole)) return;

    const std::uint32_t textBegin = first.text;
    std::size_t kept = run.firstGlyph;
    std::uint32_t textEnd = textBegin;
    std::uint32_t glyphText = textBegin; // of the next glyph that stays
    for (std::size_t i = run.firstGlyph; i < page.glyphs.size(); ++i) {
        const Glyph glyph = page.glyphs[i];
        const std::size_t end = i + 1 < page.glyphs.size() ? page.glyphs[i + 1].text : page.text.size();
        const bool seen = isSeen(page, run, glyph, clip);
        if (seen || (run.flags & kActualText) != 0)
            for (std::size_t c = glyph.text; c < end; ++c)
                page.text[textEnd++] = page.text[c];
        if (!seen) continue;
        page.glyphs[kept++] = {glyphText, glyph.offset, glyph.width};
        glyphText = textEnd;
    }
    page.glyphs.resize(kept);
    run.glyphCount = static_cast<std::uint32_t>(kept) - run.firstGlyph;
    page.text.resize(run.glyphCount == 0 ? textBegin : textEnd);
    if (run.glyphCount > 0) moveOrigin(page, run);
}

} // namespace quillow::pdf
