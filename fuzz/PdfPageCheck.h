// What holds for every page that content writes.
#pragma once

#include "engines/pdf/content/PageDump.h"

#include <cmath>
#include <cstdlib>

namespace quillow::pdf {

inline void require(bool condition) {
    if (!condition) std::abort();
}

inline bool isNumber(Point p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

/// Ends the program if runs do not have all glyphs in their order, glyphs do not have all characters in their order, or
/// a place is not a number.
inline void checkPage(const Page& page) {
    std::size_t glyphs = 0;
    for (const Run& run : page.runs) {
        require(run.firstGlyph == glyphs && run.glyphCount > 0);
        glyphs += run.glyphCount;
        require(isNumber(run.origin) && isNumber(run.direction) && std::isfinite(run.fontSize) && run.fontSize >= 0);
        require(std::abs(run.direction.x * run.direction.x + run.direction.y * run.direction.y - 1) < 1e-3F);
        require(std::isfinite(run.ascent) && std::isfinite(run.descent));
    }
    require(glyphs == page.glyphs.size());
    std::uint32_t text = 0;
    for (const Glyph& glyph : page.glyphs) {
        require(glyph.text >= text && std::isfinite(glyph.offset) && std::isfinite(glyph.width));
        text = glyph.text;
    }
    require(page.glyphs.empty() ? page.text.empty() : page.glyphs[0].text == 0 && text <= page.text.size());
    for (const Rule& rule : page.rules)
        require(rule.box.left <= rule.box.right && rule.box.bottom <= rule.box.top &&
                page.cropBox.contains({rule.box.left, rule.box.bottom}) &&
                page.cropBox.contains({rule.box.right, rule.box.top}));
    static_cast<void>(dumpOf(page, DumpDetail::glyphs));
}

} // namespace quillow::pdf
