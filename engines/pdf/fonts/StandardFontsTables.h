// The generated tables of the standard fonts' widths.
#pragma once

#include "engines/pdf/fonts/NameTable.h"
#include "engines/pdf/fonts/StandardFonts.h"

namespace quillow::pdf {

struct StandardFontTable {
    NameTable glyphs;
    const std::uint16_t* widths; ///< of the glyphs
    StandardFontMetrics metrics;
};

extern const StandardFontTable kStandardFonts[kStandardFontCount];

} // namespace quillow::pdf
