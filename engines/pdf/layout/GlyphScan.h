// What the glyphs of a run are like, found in one pass. Nearly all runs are plain text, and what is found here saves
// further looks at their letters.
#pragma once

#include "engines/pdf/content/Page.h"

#include <cstdint>

namespace quillow::pdf {

/// What is known of letters that follow one another. `PlainLineWriter` needs not look at plain ones again.
struct LetterFacts {
    /// Each glyph has a width and one character, which is written as it is; none begins before the one before it or
    /// far before its end. Blanks are U+0020, single, and seen between their letters.
    bool isPlain = false;
    bool hasBlanks = false; ///< drawn ones
    bool hasGaps = false;   ///< without a drawn blank, but wide enough for a blank in some lines
};

struct GlyphScan {
    /// The glyphs are ordered as those of plain letters are, and no gap is wide. Else nothing else is known.
    bool isWhole = false;
    float right = 0; ///< the end of the glyphs, from where offsets count from
    LetterFacts letters;
};

/// Scans a run that has glyphs. Its offsets count from `start`; its letters have that size; wider gaps than `wide` are
/// wide.
[[nodiscard]] GlyphScan scanGlyphs(const Page& page, const Run& run, float start, float size, float wide);

} // namespace quillow::pdf
