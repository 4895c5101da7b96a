// The widths of glyphs in the Compact Font Format: the first number of a glyph's charstring may be the difference to
// its font's usual width (Technical Notes 5176, 15 and 5177, 3.1).
#pragma once

#include "engines/pdf/fonts/fontfiles/CffIndex.h"
#include "engines/pdf/fonts/fontfiles/EmbeddedFont.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace quillow::pdf {

/// Where a font's Top DICT says that they are.
struct CffWidthSources {
    std::string_view font;
    CffIndex charStrings;
    CffIndex globalSubroutines;
    std::size_t privateDict = 0;
    std::size_t privateDictSize = 0;
    std::size_t fontDicts = 0;      ///< of a CID-keyed font
    std::size_t fontDictSelect = 0; ///< of a CID-keyed font
    double scale = 0;               ///< from the units of the font to a font size of 1; 0 if it does not say
};

class CffWidths {
public:
    explicit CffWidths(const CffWidthSources& sources);

    [[nodiscard]] std::optional<float> of(GlyphIndex glyph) const;

private:
    /// What one Private DICT says.
    struct Part {
        double defaultWidth = 0;
        double nominalWidth = 0;
        double scale = 0;
        CffIndex subroutines;
    };

    [[nodiscard]] Part partOf(std::size_t privateDict, std::size_t size, double scale) const;
    [[nodiscard]] Part partOf(std::string_view fontDict) const;
    [[nodiscard]] std::size_t partNumber(GlyphIndex glyph) const;

    CffWidthSources sources_;
    std::vector<Part> parts_;
};

} // namespace quillow::pdf
