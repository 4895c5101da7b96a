#include "engines/pdf/content/Page.h"

#include <algorithm>

namespace quillow::pdf {

namespace {

/// The characters from a glyph to another one, which may be past the last.
std::u32string_view textBetween(const Page& page, std::size_t firstGlyph, std::size_t endGlyph) {
    const auto offsetOf = [&page](std::size_t glyph) {
        return glyph < page.glyphs.size() ? std::size_t{page.glyphs[glyph].text} : page.text.size();
    };
    const std::size_t begin = offsetOf(firstGlyph);
    return std::u32string_view(page.text).substr(begin, offsetOf(endGlyph) - begin);
}

} // namespace

std::u32string_view Page::textOf(const Glyph& glyph) const {
    const auto index = static_cast<std::size_t>(&glyph - glyphs.data());
    return textBetween(*this, index, index + 1);
}

std::u32string_view Page::textOf(const Run& run) const {
    return textBetween(*this, run.firstGlyph, std::size_t{run.firstGlyph} + run.glyphCount);
}

Box boundsOf(const Page& page, const Run& run) {
    float first = 0;
    float last = 0;
    for (std::size_t i = 0; i < run.glyphCount; ++i) {
        const Glyph& glyph = page.glyphs[run.firstGlyph + i];
        first = std::min({first, glyph.offset, glyph.offset + glyph.width});
        last = std::max({last, glyph.offset, glyph.offset + glyph.width});
    }
    const Point d = run.direction;
    const auto corner = [&](float along, float left) {
        return Point{run.origin.x + along * d.x - left * d.y, run.origin.y + along * d.y + left * d.x};
    };
    const Point start = corner(first, run.ascent);
    Box box{start.x, start.y, start.x, start.y};
    box.extendTo(corner(first, -run.descent));
    box.extendTo(corner(last, run.ascent));
    box.extendTo(corner(last, -run.descent));
    return box;
}

} // namespace quillow::pdf
